// Looking for HID interfaces with SetupAPI, and for reports in a device's descriptor.
#pragma once

#include "helpers/WinHandles.h"

#include <cstdint>
#include <optional>
#include <string>

namespace HidSearch {

// Number of present devices with a HID interface; 0 also when they cannot be listed.
uint32_t presentDeviceCount();

// For overlapped reading and writing, shared with others.
UniqueFileHandle openPath(const std::wstring &path);

struct IndexedDevice {
    std::optional<std::wstring> path; // none past the last interface or when it cannot be read
    UniqueFileHandle handle;          // empty when it cannot be opened
};

// Opens the present HID interface of this index.
IndexedDevice openByIndex(uint32_t index);

// See HidDevice.
bool hasReportId(HANDLE device, uint16_t reportId);

} // namespace HidSearch
