// How long a conversation over the network may take: each wait in it, and all of it.
#pragma once

#include <algorithm>
#include <chrono>
#include <optional>

struct TimeLimits {
    std::chrono::milliseconds wait;                 // for connecting, for each send and for each receive
    std::optional<std::chrono::milliseconds> total; // none: as long as something comes
    // For the answer to a transfer command, before the data connection is made without it.
    std::chrono::milliseconds answer = std::chrono::seconds(2);
};

// The time of one conversation, which begins with the object.
class TimeBudget {
public:
    using Clock = std::chrono::steady_clock;

    explicit TimeBudget(const TimeLimits &limits) : wait_(limits.wait), answer_(limits.answer) {
        if (limits.total)
            end_ = Clock::now() + *limits.total;
    }

    // What the next wait may take; 0 when the time is over.
    std::chrono::milliseconds nextWait() const {
        if (!end_)
            return wait_;
        const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(*end_ - Clock::now());
        return std::clamp(left, std::chrono::milliseconds(0), wait_);
    }

    std::chrono::milliseconds transferAnswerWait() const { return std::min(answer_, nextWait()); }

private:
    std::chrono::milliseconds wait_, answer_;
    std::optional<Clock::time_point> end_;
};
