// Stand-ins at link time for the HID, SetupAPI and file functions that the transport calls, for devices and
// failures that the virtual receiver cannot produce. What is not set up here works as with one good receiver.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>
#include <windows.h>

struct HidStandIns {
    using Report = std::vector<uint8_t>; // first byte the report ID

    enum class Step {
        None,
        List,
        DetailSize,
        Detail,
        Open,
        Attributes,
        Preparsed,
        Capabilities,
        Query,
        Read
    };

    struct Device {
        std::wstring path = L"\\\\?\\hid#vid_040b&pid_f779&mi_03#1#{4d1e55b2-f16f-11cf-88cb-001111000030}";
        uint16_t vendorId = 0x040B;
        uint16_t productId = 0xF779;
        // Of input buttons, input values, output buttons, output values, feature buttons, feature values; 0
        // where there are none.
        std::array<uint8_t, 6> reportIds{0, 2, 0, 0, 0, 0};
        uint16_t reportLength = 65;
    };

    // What the transport finds.
    std::vector<Device> devices{Device()};
    std::vector<DWORD> enumerationErrors; // of the first calls, before the devices
    bool enumerationNeverEnds = false;    // every call past the devices fails with "invalid data"
    Step failing = Step::None;
    uint16_t announcedRecords = 1;  // records of each kind in the capabilities
    uint16_t givenRecords = 1;      // and in the answer to the query; the last one has the report ID
    uint8_t featureResult = 1;      // of both feature functions
    std::function<void()> onCancel; // in place of the cancelling of a read

    // What the transport did.
    int held = 0;   // lists, preparsed data and device handles that were got and not given back
    Report feature; // the buffer of the last feature function, as it was called

    static HidStandIns &instance();
    void reset();

    // Ends the pending read with this report; waits for one to be pending.
    static void send(const Report &report);
    static int reads();
    static std::vector<Report> written();
};
