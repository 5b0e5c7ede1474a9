#include "simulator/CallGuard.h"

#include "device/DeviceApi.h"

#include <windows.h>

bool isAccessKey(uint32_t key) {
    return key == DeviceApi::kAccessKey;
}

std::string quoted(const wchar_t *text) {
    if (!text)
        return "null";
    const int size = WideCharToMultiByte(CP_UTF8, 0, text, -1, nullptr, 0, nullptr, nullptr);
    std::string utf8(size > 0 ? static_cast<size_t>(size) : 1, '\0');
    WideCharToMultiByte(CP_UTF8, 0, text, -1, utf8.data(), size, nullptr, nullptr);
    utf8.pop_back(); // the zero at the end
    return "\"" + utf8 + "\"";
}

std::string hexBytes(const void *bytes, size_t byteCount) {
    constexpr char kDigits[] = "0123456789abcdef";
    std::string text;
    for (size_t i = 0; i < byteCount; ++i) {
        const uint8_t byte = static_cast<const uint8_t *>(bytes)[i];
        if (i > 0)
            text += ' ';
        text += kDigits[byte >> 4];
        text += kDigits[byte & 15];
    }
    return text;
}

void journalOutcome(const std::string &call, const Outcome &outcome) noexcept {
    try {
        std::string line = call + " -> " + std::to_string(outcome.result);
        if (outcome.reason)
            line += std::string(" (") + outcome.reason + ")";
        Journal::append(line);
    } catch (...) { // a lost line
    }
}
