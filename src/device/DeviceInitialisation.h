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

// Calls the library's init and getDeviceInfo and fills all blocks and the EQ curve store from curveFilePath.
// On a failure shows its message box and returns false: the process is then to be ended with exit code 0.
bool readDevice(DeviceState &device, const std::wstring &curveFilePath);

// Sends the stored speaker and microphone volumes to Windows. Full scale goes by way of 99 and, after half a
// second, 100: Windows and the headset settle on the same value only when it changes.
void applyStoredVolumes(DeviceState &device);

// First writes of the system block and the sound block.
void writeBlocks(DeviceState &device);

} // namespace DeviceInitialisation
