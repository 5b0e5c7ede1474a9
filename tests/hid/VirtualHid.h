// Plugs virtual HID devices into the running Wine and plays their part: the program under test, in this
// process or in another one, sees ordinary devices. All functions throw std::runtime_error when the driver
// refuses.
//
// Devices, written reports and held writes outlive this object and its process: begin with unplugAll().
#pragma once

#include "helpers/WinHandles.h"

#include <cstdint>
#include <string>
#include <vector>

#include <winioctl.h>

#include "hid/vhid/vhid.h"

class VirtualHid {
public:
    using Report = std::vector<uint8_t>; // begins with the report ID

    static constexpr wchar_t kReceiver[] = L"VID_040B&PID_F779&MI_03";

    // Installs and starts the driver where that was not done yet.
    VirtualHid();

    // Unplugs all virtual devices and forgets written reports and held writes.
    void unplugAll();

    // A device with reports of 64 bytes each way and the report ID 2. Returns when it can be opened; its path
    // as SetupAPI gives it. id in upper case.
    std::wstring plug(const std::wstring &id = kReceiver);
    void unplug(const std::wstring &id = kReceiver);

    // From the device that was plugged last to the program.
    void input(const Report &report);
    // From the program to the device: the oldest report not yet asked for; empty when none came in time.
    Report nextWrite(unsigned timeoutMs = 2000);

    // While held, writes do not come to an end.
    void holdWrites(bool hold);
    VhidCounters counters();

    // Open handles of virtual devices in all processes, once their number has been the same for 150 ms: a
    // search opens and closes what it rejects, and the system closes late.
    ULONG settledHandles();
    // Until there are more than so many of them; false after ten seconds.
    bool waitForMoreHandles(ULONG than);

private:
    void reenumerate();
    void send(DWORD request, const void *input, size_t length);
    void receive(DWORD request, void *output, size_t length);
    void control(DWORD request, void *input, size_t inputLength, void *output, size_t outputLength);

    UniqueFileHandle control_;
};
