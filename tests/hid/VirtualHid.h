// A virtual HID device in the running Wine, and its part of the conversation: the program under test, in this
// process or in another one, sees an ordinary device. Reports have 64 bytes each way and the ID 2. All
// functions throw std::runtime_error when Wine refuses.
#pragma once

#include "helpers/WinHandles.h"

#include <cstdint>
#include <string>
#include <vector>

class VirtualHid {
public:
    using Report = std::vector<uint8_t>; // 65 bytes, the first is the report ID

    static constexpr wchar_t kReceiver[] = L"VID_040B&PID_F779&MI_03";

    // Plugs it in. id in upper case.
    explicit VirtualHid(std::wstring id = kReceiver);
    ~VirtualHid();
    VirtualHid(const VirtualHid &) = delete;
    VirtualHid &operator=(const VirtualHid &) = delete;

    // Both return when it has happened.
    void plug();
    void unplug();

    // As SetupAPI gives it.
    const std::wstring &path() const { return path_; }

    // The headset's own button was pressed; as answer: with the switch's new state.
    static Report keyEvent(uint8_t state = 0);
    // Presses the button until a listener answers, with presses it need not have seen; false when none does.
    bool waitForListener();

    // From the device to the program; returns when the system has passed it on.
    void input(const Report &report);
    // From the program to the device: the oldest report not yet asked for; empty when none came in time.
    Report nextWrite(unsigned timeoutMs = 2000);

private:
    const std::wstring id_, path_;
    UniqueFileHandle control_;
};
