// The listener thread on a virtual receiver, with a switch button as the panel has it.
#include "hid/DeviceEventListener.h"
#include "hid/HidFixture.h"

#include <memory>
#include <QPushButton>
#include <QTest>
#include <QThread>

namespace {

class DeviceEventListenerTest : public VirtualHidTest {
protected:
    void SetUp() override {
        VirtualHidTest::SetUp();
        QObject::connect(button.get(), &QPushButton::clicked, &context, [this](bool checked) {
            switchByte ^= 1;
            ++clicks;
            EXPECT_FALSE(checked);
            EXPECT_EQ(QThread::currentThread(), context.thread());
        });
    }
    void TearDown() override {
        detachDeviceEventListener();
        VirtualHidTest::TearDown();
    }

    // Returns when the listener has its device.
    void start() {
        const ULONG before = hid.settledHandles();
        startDeviceEventListener(&switchByte, button.get());
        EXPECT_TRUE(hid.waitForMoreHandles(before)) << "opened no device";
    }

    static Report keyReport() {
        Report report(65);
        report[0] = kReportId;
        std::fill_n(report.begin() + 1, 4, uint8_t{0xFF});
        report[5] = 0x01;
        return report;
    }

    // Sends a key report; the answer, once the click has been handled.
    Report press() {
        const int before = clicks;
        hid.input(keyReport());
        EXPECT_TRUE(QTest::qWaitFor([&] { return clicks != before; }, 3000)) << "no click";
        return hid.nextReport(VHID_WRITE);
    }

    static Report answer(uint8_t state) {
        Report report = keyReport();
        report[6] = state;
        return report;
    }

    volatile uint8_t switchByte = 0;
    int clicks = 0;
    QObject context;
    std::unique_ptr<QPushButton> button = std::make_unique<QPushButton>();
};

TEST_F(DeviceEventListenerTest, TogglesOncePerReportAndAnswersTheNewState) {
    hid.plug();
    start();
    for (const uint8_t state : Report{1, 0, 1}) {
        EXPECT_EQ(press(), answer(state));
        EXPECT_EQ(switchByte, state);
        QTest::qWait(150); // the pause after a report
    }
    EXPECT_EQ(clicks, 3);
    EXPECT_FALSE(hid.nextEvent(100)) << "nothing is sent but the answers";
}

TEST_F(DeviceEventListenerTest, IgnoresOtherReports) {
    hid.plug();
    start();
    for (size_t byte = 1; byte <= 5; ++byte) {
        Report report = keyReport();
        report[byte] = 0x02;
        hid.input(report);
        QTest::qWait(150);
    }
    Report tooShort = keyReport();
    tooShort.resize(6);
    hid.input(tooShort);
    QTest::qWait(150);
    EXPECT_EQ(clicks, 0);
    EXPECT_FALSE(hid.nextEvent(0));
    EXPECT_EQ(press(), answer(1));
}

TEST_F(DeviceEventListenerTest, TakesTheFirstSupportedDeviceThatIsThere) {
    hid.plug(L"VID_040B&PID_F778&MI_00");
    hid.plug(L"VID_040B&PID_F778&MI_03");
    start();
    hid.input(keyReport(), L"MI_00");
    QTest::qWait(200);
    EXPECT_EQ(clicks, 0) << "listens to another interface";
    EXPECT_EQ(press(), answer(1));
}

TEST_F(DeviceEventListenerTest, KeepsToTheDeviceOfItsStart) {
    hid.plug();
    start();
    EXPECT_EQ(press(), answer(1));
    hid.unplug();
    hid.plug();
    QTest::qWait(300);
    hid.input(keyReport());
    QTest::qWait(300);
    EXPECT_EQ(clicks, 1) << "opened the device again";
}

TEST_F(DeviceEventListenerTest, WithoutADeviceItIdles) {
    startDeviceEventListener(&switchByte, button.get());
    QTest::qWait(500);
    hid.plug();
    hid.input(keyReport());
    QTest::qWait(300);
    EXPECT_EQ(clicks, 0);
}

TEST_F(DeviceEventListenerTest, SurvivesAnAnswerThatTheDeviceRefuses) {
    hid.plug();
    start();
    hid.fail(VHID_WRITE, static_cast<int32_t>(0xC0000001));
    EXPECT_EQ(press(), answer(1));
    QTest::qWait(150);
    EXPECT_EQ(press(), answer(0));
}

TEST_F(DeviceEventListenerTest, TouchesNothingAfterDetaching) {
    hid.plug();
    start();
    EXPECT_EQ(press(), answer(1));
    detachDeviceEventListener();
    button.reset();
    hid.input(keyReport());
    QTest::qWait(300);
    EXPECT_EQ(clicks, 1);
    EXPECT_FALSE(hid.nextEvent(0)) << "there is no state to answer with";
    detachDeviceEventListener(); // twice is harmless
}

// The window goes away while key reports stream in.
TEST_F(DeviceEventListenerTest, DetachesInTheMiddleOfEvents) {
    hid.plug();
    for (int round = 0; round < 5; ++round) {
        start();
        for (int i = 0; i < 3; ++i)
            hid.input(keyReport());
        Sleep(static_cast<DWORD>(round * 6));
        detachDeviceEventListener();
        button = std::make_unique<QPushButton>();
    }
}

} // namespace
