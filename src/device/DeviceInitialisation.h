// The device side of start-up, in the order in which the main window calls it. GUI thread.
#pragma once

#include "device/DeviceState.h"

#include <string>

namespace DeviceInitialisation {

// "config.txt" in the folder that the registry names, else in the current folder; absolute. Never opened
// here.
std::wstring configFilePath();

// Creates the per-user key when it does not exist. A failure is logged.
void ensureUserKey();

enum class Reading { Done, DriverFailed, DeviceInfoFailed };

// Calls the library's init and getDeviceInfo and fills all blocks and the EQ curve store from curveFilePath.
// After a failure nothing may be written to the device.
Reading readDevice(DeviceState &device, const std::wstring &curveFilePath);

// Sends the stored speaker and microphone volumes to Windows. Full scale is sent as 99 and, half a second
// later, as 100.
void applyStoredVolumes(DeviceState &device);

// First writes of the system block and the sound block.
void writeBlocks(DeviceState &device);

} // namespace DeviceInitialisation
