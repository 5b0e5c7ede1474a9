#include "hid/SupportedDevices.h"

#include <gtest/gtest.h>

TEST(SupportedDevices, AreTwoReceiversAndReservedRows) {
    ASSERT_EQ(supportedDeviceCount(), 24u);
    uint32_t vendorId = 77, productId = 77;
    uint16_t interfaceNumber = 77, reportId = 77;
    EXPECT_FALSE(supportedDevice(24, &vendorId, nullptr, nullptr, &reportId));
    EXPECT_EQ(vendorId + reportId, 154u);
    EXPECT_TRUE(supportedDevice(1, &vendorId, &productId, &interfaceNumber, nullptr));
    EXPECT_TRUE(supportedDevice(1, nullptr, nullptr, nullptr, &reportId));
    EXPECT_EQ(vendorId, 0x040Bu);
    EXPECT_EQ(productId, 0xF778u);
    EXPECT_EQ(interfaceNumber, 3u);
    EXPECT_EQ(reportId, 2u);
    EXPECT_TRUE(supportedDevice(23, &vendorId, nullptr, nullptr, &reportId));
    EXPECT_EQ(vendorId + reportId, 0u);
}
