// Looking for HID interfaces with SetupAPI, and for reports in a device's descriptor.
#pragma once

#include "helpers/WinHandles.h"

#include <cstdint>
#include <optional>
#include <string>

namespace HidSearch {

// Number of present devices with a HID interface; 0 also when they cannot be listed.
uint32_t presentDeviceCount();

// Device path of the present HID interface of this index; none past the last one or when it cannot be read.
std::optional<std::wstring> interfacePath(uint32_t index);

// For overlapped reading and writing, shared with others.
UniqueFileHandle openInterface(const std::wstring &path);

// See HidDevice.
bool hasReportId(HANDLE device, uint16_t reportId);

} // namespace HidSearch
