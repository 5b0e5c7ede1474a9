// Failures of Windows' own functions, which no device can be made to produce.
#include "hid/DeviceEventListener.h"
#include "hid/HidDevice.h"
#include "hid/HidStandIns.h"

#include <array>
#include <gtest/gtest.h>
#include <thread>

namespace {

class HidStandInTest : public testing::Test {
protected:
    void SetUp() override { windows.reset(); }
    void TearDown() override {
        device.close();
        EXPECT_EQ(windows.preparsedOutstanding, 0);
        EXPECT_EQ(windows.listsOutstanding, 0);
        EXPECT_EQ(windows.filesOutstanding, 0);
    }
    bool open() { return device.open(0x040B, 0xF779, 3, 2); }

    HidStandIns &windows = HidStandIns::instance();
    HidDevice device;
    std::array<uint8_t, 64> out{};
};

TEST_F(HidStandInTest, EveryFailedStepOfTheSearchSkipsTheDevice) {
    const struct {
        const char *what;
        void (*arrange)(HidStandIns &windows);
        bool noMoreDevices; // of openByIndex
    } cases[] = {
        {"no list", [](HidStandIns &w) { w.listFails = true; }, true},
        {"no detail size", [](HidStandIns &w) { w.detailSizeIsZero = true; }, true},
        {"no detail", [](HidStandIns &w) { w.detailFails = true; }, true},
        {"open refused", [](HidStandIns &w) { w.openFails = true; }, false},
        {"no attributes", [](HidStandIns &w) { w.attributesFail = true; }, false},
        {"no preparsed data", [](HidStandIns &w) { w.preparsedFails = true; }, false},
        {"no capabilities", [](HidStandIns &w) { w.capabilitiesFail = true; }, false},
        {"query fails", [](HidStandIns &w) { w.valueQueryFails = true; }, false},
        {"nothing announced", [](HidStandIns &w) { w.announcedValues = 0; }, false},
        {"other report ID", [](HidStandIns &w) { w.reportId = 3; }, false},
    };
    for (const auto &c : cases) {
        windows.reset();
        c.arrange(windows);
        EXPECT_FALSE(open()) << c.what;
        EXPECT_FALSE(device.isOpen()) << c.what;
        std::wstring path;
        device.openByIndex(0, path);
        EXPECT_EQ(device.noMoreDevices(), c.noMoreDevices) << c.what;
        EXPECT_EQ(windows.filesOutstanding, 0) << c.what;
    }
    windows.reset();
    EXPECT_TRUE(open()) << "the stand-ins themselves make a good device";
}

TEST_F(HidStandInTest, UnreadableEntriesArePassedOver) {
    windows.enumerationErrors = {ERROR_INVALID_DATA, ERROR_ACCESS_DENIED, ERROR_INVALID_HANDLE};
    EXPECT_TRUE(open());
    device.close();
    windows.enumerationNeverEnds = true;
    EXPECT_TRUE(open()) << "a list without an end must not hang the search";
    device.close();
    windows.enumerationErrors = {ERROR_NO_MORE_ITEMS};
    EXPECT_FALSE(open());
}

TEST_F(HidStandInTest, PathsOfAnyLengthAreOpenedWhole) {
    windows.path = L"\\\\?\\HID#" + std::wstring(3000, L'X') + L"&MI_03#7";
    EXPECT_TRUE(open()) << "the pattern stands past the 260th character";
    EXPECT_EQ(windows.openedPath, windows.path);
}

TEST_F(HidStandInTest, AnswersOfAnotherLengthThanAnnounced) {
    windows.announcedValues = 4;
    windows.givenValues = 2;
    EXPECT_TRUE(open());
    device.close();
    windows.givenValues = 60000; // more than there is room for
    EXPECT_FALSE(open());
}

TEST_F(HidStandInTest, AnOpenDeviceWithoutCapabilitiesTransfersNothing) {
    windows.capabilitiesFail = true;
    EXPECT_TRUE(device.openPath(windows.path));
    EXPECT_EQ(device.inputReportLength(), 0);
    EXPECT_EQ(device.read(out.data(), 2, 0), 0u);
    EXPECT_FALSE(device.write(out.data(), 2, 0));
}

// A driver that goes on with a cancelled read writes into the report after the time-out.
TEST_F(HidStandInTest, ReadWaitsForTheEndOfACancelledRead) {
    ASSERT_TRUE(open());
    std::thread driver;
    windows.onCancel = [&] {
        driver = std::thread([this] {
            Sleep(200);
            windows.send(std::vector<uint8_t>(65, 2));
        });
        return true;
    };
    const DWORD start = GetTickCount();
    EXPECT_EQ(device.read(out.data(), 2, 10), 65u) << "the report that came after all";
    EXPECT_GE(GetTickCount() - start, 150u) << "returned while the driver still owned the buffer";
    EXPECT_EQ(windows.cancels, 1);
    EXPECT_EQ(out[63], 2);
    driver.join();
}

TEST_F(HidStandInTest, ReportsOfAWrongLength) {
    ASSERT_TRUE(open());
    windows.send({2, 7});
    EXPECT_EQ(device.read(out.data(), 2, 1000), 2u) << "the caller sees that it is short";
    EXPECT_EQ(out[0], 7);
    EXPECT_EQ(out[1], 0);
    out.fill(0xEE);
    windows.send(std::vector<uint8_t>(90, 2)); // longer than the buffer: an error of the read
    EXPECT_EQ(device.read(out.data(), 2, 1000), 0u);
    EXPECT_EQ(out[0], 0xEE);
}

// Not of the fixture: the listener keeps its device for good.
TEST(DeviceEventListenerStandInTest, PollsAFailingDeviceAtItsUsualPace) {
    HidStandIns &windows = HidStandIns::instance();
    windows.reset();
    windows.readFails = true;
    const uint8_t switchByte = 0;
    startDeviceEventListener(&switchByte, nullptr);
    Sleep(500);
    detachDeviceEventListener();
    EXPECT_GT(windows.reads, 5);
    EXPECT_LT(windows.reads, 60) << "an unplugged device burns a core";
}

} // namespace
