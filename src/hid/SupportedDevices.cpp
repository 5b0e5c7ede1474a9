#include "hid/SupportedDevices.h"

#include <array>

namespace {

constexpr std::array<SupportedDevice, 24> kDevices = {{
    {0x040B, 0xF779, 3, 2}, {0x040B, 0xF778, 3, 2},
    // The other rows are reserved.
}};

template<typename Number>
void store(Number *target, Number value) {
    if (target)
        *target = value;
}

} // namespace

uint32_t supportedDeviceCount() {
    return static_cast<uint32_t>(kDevices.size());
}

bool supportedDevice(uint32_t index, uint32_t *vendorId, uint32_t *productId, uint16_t *interfaceNumber,
                     uint16_t *reportId) {
    if (index >= kDevices.size())
        return false;
    const SupportedDevice &device = kDevices[index];
    store(vendorId, device.vendorId);
    store(productId, device.productId);
    store(interfaceNumber, device.interfaceNumber);
    store(reportId, device.reportId);
    return true;
}
