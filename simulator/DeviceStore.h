// The receiver's memory: three blocks that outlive the panel, kept as registry values "SystemHead" (32
// bytes), "SoundBlock" (575) and "ExtBlock" (32). A missing block, or one of another size, comes from the
// start image that the knob "StartImage" chooses. The knob "DeviceCount" plugs and unplugs the receiver.
#pragma once

#include "simulator/CallGuard.h"

#include <string>

namespace DeviceStore {

int32_t deviceCount();

Outcome initialise();                      // knobs "HeldBack" and "InitResult"
Outcome read(int32_t index, void *record); // fills 931 bytes; knob "DeviceInfoResult"
// Stores the block and shows it in the caller's record, which holds the device's current values.
Outcome write(void *record, int32_t type, const void *block);

// The fields of a block that mean something, as hexadecimal bytes after their offsets.
std::string digest(int32_t type, const void *block);

} // namespace DeviceStore
