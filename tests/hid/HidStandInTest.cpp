// Which device the transport takes, failures of Windows' own functions, and the listener on a device that
// fails.
#include "hid/DeviceEventListener.h"
#include "hid/HidDevice.h"
#include "hid/HidStandIns.h"

#include <array>
#include <gtest/gtest.h>
#include <memory>
#include <QPushButton>
#include <QTest>
#include <thread>
#include <utility>

namespace {

using Report = HidStandIns::Report;
using Step = HidStandIns::Step;

constexpr uint8_t kUntouched = 0xEE;

class HidStandInTest : public testing::Test {
protected:
    void SetUp() override {
        windows.reset();
        out.fill(kUntouched);
    }
    void TearDown() override {
        device.close();
        EXPECT_EQ(windows.held, 0);
    }
    bool open() { return device.open(0x040B, 0xF779, 3, 2); }

    HidStandIns &windows = HidStandIns::instance();
    HidDevice device;
    std::array<uint8_t, 64> out{};
};

TEST_F(HidStandInTest, ChoosesByVendorProductInterfaceAndReport) {
    // The report lengths tell the devices apart.
    windows.devices = {
        {L"\\\\?\\HID#VID_040B&PID_F779&MI_03#1", 0x040B, 0xF779, {0, 2}, 3},
        {L"\\\\?\\hid#vid_040b&pid_f779&mi_00#1", 0x040B, 0xF779, {0, 5}, 4},
        {L"\\\\?\\hid#vid_1234&pid_5678&mi_0a&col02#1", 0x1234, 0x5678, {0, 2}, 5},
        {L"\\\\?\\hid#vid_1234&pid_5678&mi_0a&col03#1", 0x1234, 0x5678, {1, 2, 3, 4, 6, 7}, 6},
    };
    const struct {
        const char *what;
        uint32_t vendorId, productId, interfaceNumber, reportId;
        int32_t length; // 0: none matches
    } cases[] = {
        {"all given", 0x040B, 0xF779, 3, 2, 3},
        {"any report", 0x040B, 0xF779, 3, 0, 3},
        {"any vendor and product", 0, 0, 3, 2, 3},
        {"report absent", 0x040B, 0xF779, 3, 5, 0},
        {"other product", 0x040B, 0xF778, 3, 2, 0},
        {"other vendor", 0x040C, 0xF779, 3, 2, 0},
        {"more than 16 bits", 0x1040B, 0xF779, 3, 2, 0},
        {"other interface", 0x040B, 0xF779, 2, 2, 0},
        {"interface 0 with a report", 0x040B, 0xF779, 0, 5, 4},
        {"interface 0, report of interface 3", 0x040B, 0xF779, 0, 2, 0},
        {"interface 0 and report 0", 0x040B, 0xF779, 0, 0, 0},
        {"hexadecimal interface, first of two", 0x1234, 0x5678, 10, 2, 5},
        {"decimal digits of it", 0x1234, 0x5678, 0x10, 2, 0},
        {"report among input buttons", 0x1234, 0, 10, 1, 6},
        {"among output buttons", 0x1234, 0, 10, 3, 6},
        {"among output values", 0x1234, 0, 10, 4, 6},
        {"among feature buttons", 0x1234, 0, 10, 6, 6},
        {"among feature values", 0x1234, 0, 10, 7, 6},
    };
    for (const auto &c : cases) {
        HidDevice chosen;
        EXPECT_EQ(chosen.open(c.vendorId, c.productId, c.interfaceNumber, c.reportId), c.length != 0)
            << c.what;
        EXPECT_EQ(chosen.isOpen(), c.length != 0) << c.what;
        EXPECT_EQ(chosen.inputReportLength(), c.length) << c.what;
    }
    EXPECT_TRUE(HidDevice(0x040B, 0xF779, 3).isOpen());
    EXPECT_FALSE(HidDevice(0x040B, 0xF779, 0).isOpen());
}

TEST_F(HidStandInTest, EveryFailedStepOfTheSearchSkipsTheDevice) {
    const struct {
        Step step;
        bool noMoreDevices; // of openByIndex
    } cases[] = {
        {Step::List, true},          {Step::DetailSize, true},  {Step::Detail, true},
        {Step::Open, false},         {Step::Attributes, false}, {Step::Preparsed, false},
        {Step::Capabilities, false}, {Step::Query, false},
    };
    for (const auto &c : cases) {
        windows.failing = c.step;
        EXPECT_FALSE(open()) << static_cast<int>(c.step);
        EXPECT_FALSE(device.isOpen()) << static_cast<int>(c.step);
        std::wstring path;
        device.openByIndex(0, path);
        EXPECT_EQ(device.noMoreDevices(), c.noMoreDevices) << static_cast<int>(c.step);
        EXPECT_EQ(windows.held, 0) << static_cast<int>(c.step);
    }
}

TEST_F(HidStandInTest, UnreadableEntriesArePassedOver) {
    windows.enumerationErrors = {ERROR_INVALID_DATA, ERROR_ACCESS_DENIED, ERROR_INVALID_HANDLE};
    windows.enumerationNeverEnds = true;
    EXPECT_TRUE(open()) << "a list without an end must not hang the search";
    windows.enumerationErrors = {ERROR_NO_MORE_ITEMS};
    EXPECT_FALSE(open());
}

TEST_F(HidStandInTest, PathsOfAnyLengthAreOpenedWhole) {
    windows.devices[0].path = L"\\\\?\\HID#" + std::wstring(3000, L'X') + L"&MI_03#7";
    EXPECT_TRUE(open());
}

TEST_F(HidStandInTest, AnswersOfAnotherLengthThanAnnounced) {
    windows.announcedRecords = 4;
    windows.givenRecords = 2;
    EXPECT_TRUE(open());
    windows.givenRecords = 60000; // more than there is room for
    EXPECT_FALSE(open());
}

TEST_F(HidStandInTest, GoesThroughItsStates) {
    EXPECT_EQ(device.read(out.data(), 2, 10), 0u);
    EXPECT_FALSE(device.write(out.data(), 2, 0));

    ASSERT_TRUE(device.openPath(windows.devices[0].path));
    ASSERT_TRUE(open()) << "opening again closes first";
    EXPECT_FALSE(device.openPath(L"C:\\no such device"));
    EXPECT_FALSE(device.isOpen());
    EXPECT_EQ(windows.held, 0);

    ASSERT_TRUE(open());
    device.close();
    EXPECT_FALSE(device.isOpen());
    EXPECT_EQ(device.inputReportLength(), 65) << "closing keeps the lengths";
    EXPECT_EQ(device.read(out.data(), 2, 10), 0u);
    EXPECT_FALSE(device.write(out.data(), 2, 0));

    ASSERT_TRUE(open());
    EXPECT_EQ(device.reset(), 0);
    EXPECT_FALSE(device.isOpen());
    EXPECT_EQ(device.inputReportLength() + device.outputReportLength(), 0);
    EXPECT_EQ(std::exchange(windows.held, 0), 1) << "reset leaves the handle to somebody else";

    windows.failing = Step::Capabilities;
    EXPECT_TRUE(device.openPath(windows.devices[0].path));
    EXPECT_EQ(device.read(out.data(), 2, 0), 0u) << "without lengths nothing is transferred";
    EXPECT_FALSE(device.write(out.data(), 2, 0));
}

// A driver that goes on with a cancelled read writes into the report after the time-out.
TEST_F(HidStandInTest, ReadWaitsForTheEndOfACancelledRead) {
    ASSERT_TRUE(open());
    std::thread driver;
    windows.onCancel = [&] {
        driver = std::thread([] {
            Sleep(200);
            HidStandIns::send(Report(65, 2));
        });
    };
    const DWORD start = GetTickCount();
    EXPECT_EQ(device.read(out.data(), 2, 10), 65u) << "the report that came after all";
    EXPECT_GE(GetTickCount() - start, 150u) << "returned while the driver still owned the buffer";
    EXPECT_EQ(out[63], 2);
    driver.join();
}

TEST_F(HidStandInTest, FeatureReports) {
    ASSERT_TRUE(open());
    for (const uint8_t result : Report{0, 2, 1}) {
        windows.featureResult = result;
        EXPECT_EQ(device.setFeature(Report{7, 8, 9}.data(), 3), result != 0);
        EXPECT_EQ(windows.feature, (Report{7, 8, 9}));
        EXPECT_EQ(device.getFeature(out.data(), 3), result != 0);
        EXPECT_EQ(windows.feature, Report(4)) << "asks for report 0";
        EXPECT_EQ(out[2], result == 1 ? 3 : kUntouched) << "only TRUE itself brings data";
        EXPECT_EQ(out[3], kUntouched);
    }
}

// The listener keeps its device for good, so these come last and share one.
class ListenerStandInTest : public testing::Test {
protected:
    static Report keyReport(uint8_t state = 0) {
        Report report{2, 0xFF, 0xFF, 0xFF, 0xFF, 0x01, state};
        report.resize(65);
        return report;
    }
};

TEST_F(ListenerStandInTest, TouchesNothingOfTheWindowOnceDetached) {
    HidStandIns::instance().reset();
    volatile uint8_t switchByte = 1;
    int clicks = 0;
    QObject context;
    auto button = std::make_unique<QPushButton>();
    QObject::connect(button.get(), &QPushButton::clicked, &context, [&] { ++clicks; });

    startDeviceEventListener(&switchByte, button.get());
    HidStandIns::send(keyReport());
    EXPECT_TRUE(QTest::qWaitFor([&] { return clicks == 1; }));
    EXPECT_TRUE(QTest::qWaitFor([] { return !HidStandIns::written().empty(); }));
    std::thread keys([] {
        for (int i = 0; i < 5; ++i)
            HidStandIns::send(keyReport());
    });
    Sleep(200);
    detachDeviceEventListener();
    button.reset();
    Sleep(50); // the answer to the last click
    const size_t answers = HidStandIns::written().size();
    keys.join();
    EXPECT_EQ(HidStandIns::written(), std::vector<Report>(answers, keyReport(0)));
}

TEST_F(ListenerStandInTest, PollsAFailingDeviceAtItsUsualPace) {
    HidStandIns::instance().failing = Step::Read;
    Sleep(200);
    const int before = HidStandIns::reads();
    Sleep(500);
    EXPECT_GT(HidStandIns::reads() - before, 5);
    EXPECT_LT(HidStandIns::reads() - before, 60) << "an unplugged device burns a core";
}

} // namespace
