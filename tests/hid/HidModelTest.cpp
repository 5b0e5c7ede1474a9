#include "hid/HidMatching.h"
#include "hid/KeyEvent.h"
#include "hid/SupportedDevices.h"

#include <array>
#include <gtest/gtest.h>

TEST(SupportedDevices, KnowTwoReceiversAndReserveTheOtherRows) {
    ASSERT_EQ(supportedDeviceCount(), 24u);
    for (uint32_t row = 0; row < 24; ++row) {
        uint32_t vendorId = 1, productId = 1;
        uint16_t interfaceNumber = 1, reportId = 1;
        ASSERT_TRUE(supportedDevice(row, &vendorId, &productId, &interfaceNumber, &reportId));
        const bool used = row < 2;
        EXPECT_EQ(vendorId, used ? 0x040Bu : 0u) << row;
        EXPECT_EQ(productId, row == 0 ? 0xF779u : row == 1 ? 0xF778u : 0u) << row;
        EXPECT_EQ(interfaceNumber, used ? 3 : 0) << row;
        EXPECT_EQ(reportId, used ? 2 : 0) << row;
    }
    uint32_t productId = 77;
    EXPECT_FALSE(supportedDevice(24, nullptr, &productId, nullptr, nullptr));
    EXPECT_EQ(productId, 77u);
    EXPECT_TRUE(supportedDevice(1, nullptr, &productId, nullptr, nullptr));
}

TEST(HidMatching, WritesTheInterfacePattern) {
    const struct {
        uint32_t interfaceNumber, reportId;
        const wchar_t *pattern;
    } cases[] = {
        {0, 0, L""}, {0, 1, L"&mi_00"}, {3, 2, L"&mi_03"}, {10, 2, L"&mi_0a"}, {0x123, 0, L"&mi_123"},
    };
    for (const auto &c : cases)
        EXPECT_EQ(HidMatching::interfacePattern(c.interfaceNumber, c.reportId), c.pattern);
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
