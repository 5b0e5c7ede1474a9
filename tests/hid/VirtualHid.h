// Plugs virtual HID devices into the running Wine and plays their part: the program under test, in this
// process or in another one, sees ordinary devices. All functions throw std::runtime_error when the driver
// refuses.
//
// Devices, queued events and injected failures outlive this object and its process: begin with unplugAll().
#pragma once

#include "helpers/WinHandles.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include <winioctl.h>

#include "hid/vhid/vhid.h"

class VirtualHid {
public:
    using Report = std::vector<uint8_t>;
    struct Event {
        VhidKind kind;
        Report report; // begins with the report ID, where the device uses IDs
    };

    static constexpr wchar_t kReceiver[] = L"VID_040B&PID_F779&MI_03";
    static constexpr wchar_t kInstance[] = L"7&1A2B3C4D&0&0000";

    // Installs and starts the driver where that was not done yet.
    VirtualHid();

    // Unplugs all virtual devices and forgets events, failures, held writes and descriptors.
    void unplugAll();

    // Returns when the device can be opened; its path as SetupAPI gives it. id and instance in upper case.
    std::wstring plug(const std::wstring &id = kReceiver, const std::wstring &instance = kInstance);
    void unplug(const std::wstring &id = kReceiver, const std::wstring &instance = kInstance);

    // Report descriptor of the devices plugged from now on; at first 64 bytes each way with report ID 2.
    void setDescriptor(const Report &descriptor);

    // From the device to the program; device: a part of its id or instance.
    void input(const Report &report, const std::wstring &device = L"VID_");
    // From the program to the device: the oldest request not yet asked for, or none within the time.
    std::optional<Event> nextEvent(unsigned timeoutMs);
    // As nextEvent, passing over requests of other kinds; empty when none came.
    Report nextReport(VhidKind kind, unsigned timeoutMs = 2000);

    // The next count requests of this kind end with this NTSTATUS.
    void fail(VhidKind kind, int32_t status, unsigned count = 1);
    // While held, writes do not come to an end.
    void holdWrites(bool hold);
    // Data of the feature report, without a report ID.
    void setFeature(const Report &data);
    VhidCounters counters();

    // Open handles of virtual devices in all processes, once their number has been the same for 150 ms: a
    // search opens and closes what it rejects, and the system closes late.
    ULONG settledHandles();
    // Until there are more than so many of them; false after ten seconds.
    bool waitForMoreHandles(ULONG than);

private:
    void startDriver();
    void reenumerate();
    void send(DWORD request, const void *input, size_t length);
    void receive(DWORD request, void *output, size_t length);

    UniqueFileHandle control_;
};
