// Stand-ins at link time for the HID, SetupAPI and file functions that the transport calls, for what no
// device can be made to do. A "device" is a message pipe; everything not set up here works as with one good
// device.
#pragma once

#include "helpers/WinHandles.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

struct HidStandIns {
    // Listing.
    bool listFails = false;
    std::vector<DWORD> enumerationErrors; // of the first calls; then one device and the end
    bool enumerationNeverEnds = false;    // every further call fails with "invalid data"
    bool detailSizeIsZero = false;
    bool detailFails = false;
    std::wstring path = L"\\\\?\\hid#vid_040b&pid_f779&mi_03#1#{4d1e55b2-f16f-11cf-88cb-001111000030}";

    // The device.
    bool openFails = false;
    bool readFails = false;
    bool attributesFail = false;
    bool preparsedFails = false;
    bool capabilitiesFail = false;
    uint16_t announcedValues = 1; // input value records in the capabilities
    uint16_t givenValues = 1;     // and in the answer to the query
    bool valueQueryFails = false;
    uint16_t reportId = 2; // of the last record
    uint16_t inputLength = 65;

    // What the transport did.
    std::wstring openedPath;
    int preparsedOutstanding = 0; // got and not freed
    int listsOutstanding = 0;     // made and not destroyed
    int filesOutstanding = 0;     // opened pipes not closed
    int reads = 0;
    int cancels = 0;
    std::function<bool()> onCancel; // true: the cancelling has no effect

    static HidStandIns &instance();
    // Back to one good device.
    void reset();
    // A whole input report, first byte the report ID.
    void send(const std::vector<uint8_t> &report);
};
