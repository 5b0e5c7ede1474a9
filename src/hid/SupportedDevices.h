// The receivers that the panel talks to directly over HID. A row of zeros is reserved and matches no device.
#pragma once

#include <cstdint>

struct SupportedDevice {
    uint32_t vendorId;
    uint32_t productId;
    uint16_t interfaceNumber; // USB interface, "&MI_.." of the device path
    uint16_t reportId;
};

// Number of rows, reserved ones included: always 24.
uint32_t supportedDeviceCount();

// False for an index past the table; then nothing is written. Outputs may be null.
bool supportedDevice(uint32_t index, uint32_t *vendorId, uint32_t *productId, uint16_t *interfaceNumber,
                     uint16_t *reportId);
