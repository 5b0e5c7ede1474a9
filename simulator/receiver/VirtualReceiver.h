// A HID device in the running Wine that programs take for the headset's receiver, and its part of the
// conversation. Reports have 64 bytes each way and the ID 2. A plugged receiver outlives the object and the
// process, until Wine ends. All functions throw std::runtime_error when Wine refuses.
#pragma once

#include "helpers/WinHandles.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

class VirtualReceiver {
public:
    using Report = std::vector<uint8_t>; // 65 bytes, the first is the report ID

    static constexpr wchar_t kReceiver[] = L"VID_040B&PID_F779&MI_03";

    // Windows has no such devices; there every other function fails.
    static bool isSupported();

    // The receiver of this hardware ID, in upper case, whether it is plugged in or not.
    explicit VirtualReceiver(std::wstring id = kReceiver);

    // Both return when it has happened, and do nothing when it is so already.
    void plug();
    void unplug();

    bool isPlugged() const { return static_cast<bool>(control_); }

    // As SetupAPI gives it.
    const std::wstring &path() const { return path_; }

    // The headset's own button was pressed; as answer: with the switch's new state.
    static Report keyEvent(uint8_t state = 0);
    // Presses the button: the switch's new state as a listening program answers it, or none in this time.
    std::optional<uint8_t> pressKey(unsigned timeoutMs);

    // From the device to the program; returns when the system has passed it on.
    void input(const Report &report);
    // From the program to the device: the oldest report not yet asked for; empty when none came in time.
    Report nextWrite(unsigned timeoutMs = 2000);

private:
    const std::wstring id_, path_;
    UniqueFileHandle control_;
};
