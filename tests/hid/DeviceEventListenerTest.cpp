// The listener while receivers come and go, and after its window's end.
#include "hid/DeviceEventListener.h"
#include "helpers/WinHandles.h"
#include "hid/PluggedReceiver.h"

#include <algorithm>
#include <atomic>
#include <gtest/gtest.h>
#include <memory>
#include <QPushButton>
#include <QTest>
#include <thread>

namespace {

uint64_t processorMilliseconds() {
    FILETIME creation{}, exit{}, kernel{}, user{};
    GetProcessTimes(GetCurrentProcess(), &creation, &exit, &kernel, &user);
    return (uint64_t{kernel.dwLowDateTime} + user.dwLowDateTime) / 10000; // of 100 ns
}

// In the quietest of some half seconds: a busy machine charges some of its time to others.
bool burnsACore() {
    uint64_t used = 1000;
    for (int attempt = 0; attempt < 6 && used >= 50; ++attempt) {
        const uint64_t before = processorMilliseconds();
        Sleep(500);
        used = std::min(used, processorMilliseconds() - before);
    }
    return used >= 50;
}

// One test, since the listener's thread runs until the process ends.
TEST(DeviceEventListener, FindsReceiversThatComeAndTouchesNoClosedWindow) {
    std::atomic<uint8_t> switchState{1};
    int clicks = 0;
    QObject context;
    auto button = std::make_unique<QPushButton>();
    QObject::connect(button.get(), &QPushButton::clicked, &context, [&] { ++clicks; });
    auto listener = std::make_unique<DeviceEventListener>(switchState, *button);
    EXPECT_FALSE(burnsACore()) << "without a receiver";

    for (const wchar_t *id : {L"VID_040B&PID_F778&MI_03", PluggedReceiver::kReceiver}) {
        PluggedReceiver receiver(id);
        listener->devicesChanged();
        clicks = 0;
        ASSERT_TRUE(receiver.waitForListener()) << id;
        EXPECT_TRUE(QTest::qWaitFor([&] { return clicks > 0; }));
        listener->devicesChanged(); // of another device: this one stays open
        receiver.input(PluggedReceiver::keyEvent());
        EXPECT_EQ(receiver.nextWrite(), PluggedReceiver::keyEvent(0)) << "the opposite of the switch";
    }
    EXPECT_FALSE(burnsACore()) << "after the receiver was unplugged, before Windows tells of it";

    PluggedReceiver receiver;
    listener->devicesChanged();
    ASSERT_TRUE(receiver.waitForListener());
    std::atomic<bool> stop{false};
    std::thread keys([&] {
        for (; !stop; Sleep(1))
            receiver.input(PluggedReceiver::keyEvent());
    });
    EXPECT_FALSE(receiver.nextWrite().empty());
    listener.reset();
    button.reset();
    Sleep(300);
    while (!receiver.nextWrite(0).empty()) {
    } // what was under way
    EXPECT_TRUE(receiver.nextWrite(500).empty()) << "still answers";
    stop = true;
    keys.join();
}

} // namespace
