// A virtual receiver that is plugged in for as long as this object lives.
#pragma once

#include "simulator/receiver/VirtualReceiver.h"
#include "support/WaitUntil.h"

class PluggedReceiver : public VirtualReceiver {
public:
    explicit PluggedReceiver(const wchar_t *id = kReceiver) : VirtualReceiver(id) { plug(); }
    ~PluggedReceiver() { unplug(); }

    // Presses the button until a listener, told that the devices changed, answers; false when none does.
    template<typename Tell>
    bool waitForListener(Tell devicesChanged) {
        const bool answered = giveUntil(devicesChanged, [&] { return pressKey(300).has_value(); });
        while (!nextWrite(300).empty()) {
        } // a late answer may be that to an earlier press
        return answered;
    }
};
