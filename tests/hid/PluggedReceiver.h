// A virtual receiver that is plugged in for as long as this object lives.
#pragma once

#include "simulator/receiver/VirtualReceiver.h"

class PluggedReceiver : public VirtualReceiver {
public:
    explicit PluggedReceiver(const wchar_t *id = kReceiver) : VirtualReceiver(id) { plug(); }
    ~PluggedReceiver() { unplug(); }

    // Presses the button until a listener answers, with presses it need not have seen; false when none does.
    bool waitForListener() {
        constexpr unsigned kAnswerTimeoutMs = 300; // the listener pauses for 100 ms after each event
        bool answered = false;
        for (int press = 0; press < 50 && !answered; ++press)
            answered = pressKey(kAnswerTimeoutMs).has_value();
        while (!nextWrite(kAnswerTimeoutMs).empty()) {
        } // a late answer may be that to an earlier press
        return answered;
    }
};
