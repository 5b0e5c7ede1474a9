#include "hid/HidMatching.h"
#include "hid/KeyEvent.h"
#include "hid/SupportedDevices.h"

#include <array>
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

TEST(HidMatching, WritesTheInterfacePattern) {
    const struct {
        uint32_t interfaceNumber, reportId;
        const wchar_t *pattern;
    } cases[] = {
        {0, 0, L""},        {0, 1, L"&mi_00"},      {1, 0, L"&mi_01"},
        {10, 2, L"&mi_0a"}, {0x123, 0, L"&mi_123"}, {0xFFFFFFFF, 0, L"&mi_ffffffff"},
    };
    for (const auto &c : cases)
        EXPECT_EQ(HidMatching::interfacePattern(c.interfaceNumber, c.reportId), c.pattern)
            << c.interfaceNumber;
}

TEST(KeyEvent, IsRecognisedByItsFirstFiveBytes) {
    std::array<uint8_t, KeyEvent::kReportSize> report{0xFF, 0xFF, 0xFF, 0xFF, 0x01, 0x5A};
    EXPECT_TRUE(KeyEvent::isButtonPress(report.data()));
    for (size_t byte = 0; byte < 5; ++byte) {
        auto other = report;
        other[byte] ^= 0x03;
        EXPECT_FALSE(KeyEvent::isButtonPress(other.data())) << byte;
    }
}
