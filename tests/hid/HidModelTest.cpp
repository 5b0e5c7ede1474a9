#include "hid/SupportedDevices.h"

#include <gtest/gtest.h>

TEST(SupportedDevices, RejectIndexesPastTheTableAndAllowMissingOutputs) {
    ASSERT_EQ(supportedDeviceCount(), 24u);
    uint32_t vendorId = 77;
    uint16_t reportId = 77;
    for (const uint32_t row : {24u, 0xFFFFFFFFu})
        EXPECT_FALSE(supportedDevice(row, &vendorId, nullptr, nullptr, &reportId)) << row;
    EXPECT_EQ(vendorId + reportId, 154u);
    EXPECT_TRUE(supportedDevice(1, &vendorId, nullptr, nullptr, nullptr));
    EXPECT_TRUE(supportedDevice(1, nullptr, nullptr, nullptr, &reportId));
    EXPECT_EQ(vendorId, 0x040Bu);
    EXPECT_EQ(reportId, 2u);
    EXPECT_TRUE(supportedDevice(23, &vendorId, nullptr, nullptr, &reportId));
    EXPECT_EQ(vendorId + reportId, 0u) << "reserved";
}
