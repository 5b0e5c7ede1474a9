// What every entry point has in common: it checks the access key, lets no exception out and leaves a line in
// the journal.
#pragma once

#include "simulator/Journal.h"

#include <cstdint>
#include <string>

// Result of one entry point, with the reason of a refusal for the journal.
struct Outcome {
    int32_t result = 0;
    const char *reason = nullptr;
};

constexpr int32_t kFailed = -1;

// "init()", "getDeviceInfo(0)"
template<typename... Numbers>
std::string describeCall(const char *name, Numbers... numbers) {
    std::string arguments;
    ((arguments += (arguments.empty() ? "" : ", ") + std::to_string(numbers)), ...);
    return std::string(name) + "(" + arguments + ")";
}

std::string quoted(const wchar_t *text); // as UTF-8 in quotation marks; null without
std::string hexBytes(const void *bytes, size_t byteCount);

void journalOutcome(const std::string &call, const Outcome &outcome) noexcept;

// describe gives the call's text, act does the work and gives an Outcome. whenThrown is the result when
// either runs out of memory.
template<typename Describe, typename Act>
int32_t guardedCall(int32_t whenThrown, Describe describe, Act act) noexcept {
    try {
        const std::string call = describe();
        const Outcome outcome = act();
        journalOutcome(call, outcome);
        return outcome.result;
    } catch (...) {
        Journal::append("a call was given up: out of memory");
        return whenThrown;
    }
}

bool isAccessKey(uint32_t key);

template<typename Describe, typename Act>
int32_t keyedCall(uint32_t key, Describe describe, Act act) noexcept {
    return guardedCall(kFailed, describe, [&]() -> Outcome {
        if (!isAccessKey(key))
            return {kFailed, "wrong access key"};
        return act();
    });
}
