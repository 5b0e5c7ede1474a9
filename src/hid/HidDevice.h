// An open HID interface with overlapped input and output of whole reports.
//
// Report lengths count the report-ID byte; the data passed in and out does not. No operation tells why it
// failed. One thread at a time uses an object. Windows serves each open handle with its own queue of input
// reports.
#pragma once

#include "helpers/WinHandles.h"

#include <cstdint>
#include <string>
#include <windows.h>

class HidDevice {
public:
    // All three 0: a closed object; otherwise as open() with report ID 0.
    explicit HidDevice(uint32_t vendorId = 0, uint32_t productId = 0, uint32_t interfaceNumber = 0);
    HidDevice(const HidDevice &) = delete;
    HidDevice &operator=(const HidDevice &) = delete;

    // Opens the first present device with these IDs (0: any), this USB interface and a report of this ID (0:
    // any report). Interface 0 together with report ID 0 never matches. An open device is closed first.
    bool open(uint32_t vendorId, uint32_t productId, uint32_t interfaceNumber, uint32_t reportId);
    bool openPath(const std::wstring &path);

    // Closes the handles and keeps the report lengths.
    void close();
    // Back to the state of a fresh object without closing anything: the handles are someone else's now.
    int32_t reset();

    // Opens the HID interface of this index; its path is returned even when it cannot be opened. Past the
    // last one noMoreDevices() becomes true.
    UniqueFileHandle openByIndex(uint32_t index, std::wstring &path);
    // Whether the device has an input, output or feature report of this ID; 0 asks for its capabilities only.
    static bool hasReportId(HANDLE device, uint16_t reportId);
    // Takes the report lengths of the open device, makes the read event, and drops queued input reports.
    void configure();

    // Sends outputReportLength() - 1 bytes of data. Waits without limit; the time-out is not used.
    bool write(const uint8_t *data, uint8_t reportId, uint32_t timeoutMs);
    // Waits for one input report (timeoutMs 0: without limit) and copies inputReportLength() - 1 bytes to
    // out. Returns the number of bytes read with the report-ID byte, or 0, with out unchanged, for none.
    uint32_t read(uint8_t *out, uint8_t reportId, uint32_t timeoutMs);

    // report begins with the report ID.
    bool setFeature(const uint8_t *report, uint32_t length);
    // Reads the feature report of ID 0: length bytes of data.
    bool getFeature(uint8_t *out, uint32_t length);

    bool isOpen() const { return isOpen_; }
    // Whether the open device still answers: an unplugged one stays open, but does not.
    bool isConnected() const;
    bool noMoreDevices() const { return noMoreDevices_ != 0; }
    int32_t inputReportLength() const { return inputReportLength_; }
    int32_t outputReportLength() const { return outputReportLength_; }
    int32_t featureReportLength() const { return featureReportLength_; }

private:
    uint32_t noMoreDevices_ = 0;
    UniqueFileHandle deviceHandle_;
    UniqueFileHandle readEvent_; // manual reset
    OVERLAPPED readOverlapped_{};
    int32_t inputReportLength_ = 0;
    int32_t outputReportLength_ = 0;
    int32_t featureReportLength_ = 0;
    bool isOpen_ = false;
};
