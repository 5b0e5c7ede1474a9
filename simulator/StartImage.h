// What a receiver holds that was never written to.
#pragma once

#include "device/PropertyBlocks.h"

enum class StartImage : uint32_t {
    Plausible = 0, // a headset as it leaves the box
    Zero = 1,      // a blank memory
    Full = 2,      // an erased memory: every byte is 0xFF
};

// Unknown choices give the plausible image.
DeviceInfo makeStartImage(StartImage choice);
