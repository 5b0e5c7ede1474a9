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
        return hid.nextReport();
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

TEST_F(DeviceEventListenerTest, TogglesOncePerKeyReportAndAnswersTheNewState) {
    hid.plug();
    start();
    for (const uint8_t state : Report{1, 0, 1}) {
        EXPECT_EQ(press(), answer(state));
        EXPECT_EQ(switchByte, state);
        QTest::qWait(150); // the pause after a report
    }
    Report other = keyReport();
    other[5] = 0x02;
    hid.input(other);
    QTest::qWait(200);
    EXPECT_EQ(clicks, 3);
    EXPECT_EQ(hid.nextReport(0), Report()) << "nothing is sent but the answers";
}

TEST_F(DeviceEventListenerTest, KeepsToTheFirstSupportedDeviceOfItsStart) {
    hid.plug(L"VID_040B&PID_F778&MI_00");
    const wchar_t *receiver = L"VID_040B&PID_F778&MI_03";
    hid.plug(receiver);
    start();
    hid.input(keyReport(), L"MI_00");
    QTest::qWait(200);
    EXPECT_EQ(clicks, 0) << "listens to another interface";
    EXPECT_EQ(press(), answer(1));
    hid.unplug(receiver);
    hid.plug(receiver);
    QTest::qWait(300);
    hid.input(keyReport(), receiver);
    QTest::qWait(300);
    EXPECT_EQ(clicks, 1) << "opened the device again";
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
    EXPECT_EQ(hid.nextReport(0), Report()) << "there is no state to answer with";
    detachDeviceEventListener(); // twice is harmless
}

} // namespace
