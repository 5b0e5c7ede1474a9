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

// Opens the present HID interface of this index. path: its device path, also when it cannot be opened; none
// past the last interface or when it cannot be read.
UniqueFileHandle openByIndex(uint32_t index, std::optional<std::wstring> &path);

// See HidDevice.
bool hasReportId(HANDLE device, uint16_t reportId);

} // namespace HidSearch
