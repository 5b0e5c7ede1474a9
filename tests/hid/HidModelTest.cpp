#include "hid/HidMatching.h"
#include "hid/KeyEvent.h"
#include "hid/SupportedDevices.h"
#include "hid/UpgradeStage.h"

#include <algorithm>
#include <array>
#include <gtest/gtest.h>
#include <vector>

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
}

TEST(SupportedDevices, RejectIndexesPastTheTableAndAllowMissingOutputs) {
    uint32_t productId = 77;
    for (const uint32_t row : {24u, 25u, 0xFFFFFFFFu})
        EXPECT_FALSE(supportedDevice(row, nullptr, &productId, nullptr, nullptr)) << row;
    EXPECT_EQ(productId, 77u);
    EXPECT_TRUE(supportedDevice(1, nullptr, &productId, nullptr, nullptr));
    EXPECT_EQ(productId, 0xF778u);
}

TEST(HidMatching, WritesTheInterfacePattern) {
    const struct {
        uint32_t interfaceNumber, reportId;
        const wchar_t *pattern;
    } cases[] = {
        {0, 0, L""},        {0, 1, L"&mi_00"},    {1, 0, L"&mi_01"},      {3, 2, L"&mi_03"},
        {10, 2, L"&mi_0a"}, {0xFF, 0, L"&mi_ff"}, {0x123, 0, L"&mi_123"}, {0xFFFFFFFF, 0, L"&mi_ffffffff"},
    };
    for (const auto &c : cases)
        EXPECT_EQ(HidMatching::interfacePattern(c.interfaceNumber, c.reportId), c.pattern)
            << c.interfaceNumber;
}

TEST(HidMatching, FindsThePatternInPathsOfAnyCase) {
    const std::wstring path = L"\\\\?\\HID#VID_040B&PID_F779&MI_0A#7&1A2B3C4D&0&0000#{4d1e55b2}";
    EXPECT_TRUE(HidMatching::pathMatches(path, L"&mi_0a"));
    EXPECT_FALSE(HidMatching::pathMatches(path, L"&mi_00"));
    EXPECT_FALSE(HidMatching::pathMatches(path, L"")) << "no pattern rejects every device";
    EXPECT_FALSE(HidMatching::pathMatches(L"", L"&mi_00"));
    EXPECT_TRUE(HidMatching::pathMatches(std::wstring(5000, L'X') + L"&Mi_03", L"&mi_03"));
}

TEST(HidMatching, ComparesWholeIdsWithZeroAsWildcard) {
    EXPECT_TRUE(HidMatching::idMatches(0, 0x1234));
    EXPECT_TRUE(HidMatching::idMatches(0x1234, 0x1234));
    EXPECT_FALSE(HidMatching::idMatches(0x1234, 0));
    EXPECT_FALSE(HidMatching::idMatches(0x11234, 0x1234)) << "more than 16 bits match no device";
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

TEST(KeyEvent, AnswerCarriesTheNewStateAndNothingOfTheReport) {
    for (const auto &[before, after] : {std::pair<uint8_t, uint8_t>{0, 1}, {1, 0}}) {
        std::array<uint8_t, KeyEvent::kReportSize + 1> data;
        data.fill(0xA5);
        KeyEvent::writeAnswer(data.data(), before);
        const std::vector<uint8_t> head(data.begin(), data.begin() + 6);
        EXPECT_EQ(head, (std::vector<uint8_t>{0xFF, 0xFF, 0xFF, 0xFF, 0x01, after}));
        EXPECT_TRUE(std::all_of(data.begin() + 6, data.end() - 1, [](uint8_t byte) { return byte == 0; }));
        EXPECT_EQ(data.back(), 0xA5) << "wrote past the report";
    }
}

TEST(UpgradeStage, ShowsTextAndProgressByStage) {
    const struct {
        uint32_t stage;
        const char *status; // null: unchanged
        int progress;       // -1: unchanged
    } cases[] = {
        {0, "start progressing", 0},
        {1, "openning OTA device", -1},
        {2, "Entering OTA mode", -1},
        {3, "writing flash...", -1},
        {4, nullptr, 42},
        {5, "waiting END status...", -1},
        {6, "write flash END ", -1},
        {7, "", -1},
        {0xFFFFFFFF, "", -1},
    };
    for (const auto &c : cases) {
        const UpgradeDisplay display = upgradeDisplay(c.stage, 42);
        EXPECT_STREQ(display.status, c.status) << c.stage;
        EXPECT_EQ(display.progress.value_or(-1), c.progress) << c.stage;
    }
}
