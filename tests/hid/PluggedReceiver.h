// A virtual receiver that is plugged in for as long as this object lives.
#pragma once

#include "simulator/receiver/VirtualReceiver.h"
#include "simulator/WaitUntil.h"

class PluggedReceiver : public VirtualReceiver {
public:
    explicit PluggedReceiver(const wchar_t *id = kReceiver) : VirtualReceiver(id) { plug(); }
    ~PluggedReceiver() { unplug(); }

    // Presses the button until a listener answers; false when none does. It is told again and again that the
    // devices changed, since Wine's HID interface comes up some time after plug().
    template<typename Tell>
    bool waitForListener(Tell devicesChanged) {
        const auto pressed = [&] {
            devicesChanged();
            return pressKey(300).has_value();
        };
        const bool answered = waitUntil(pressed);
        while (!nextWrite(300).empty()) {
        } // a late answer may be that to an earlier press
        return answered;
    }
};
