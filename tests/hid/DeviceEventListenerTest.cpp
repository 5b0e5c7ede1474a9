// The listener while receivers come and go, and after its window's end.
#include "hid/DeviceEventListener.h"
#include "hid/PluggedReceiver.h"

#include <atomic>
#include <gtest/gtest.h>
#include <memory>
#include <QPushButton>

static uint64_t processorMilliseconds() {
    FILETIME creation{}, exit{}, kernel{}, user{};
    GetProcessTimes(GetCurrentProcess(), &creation, &exit, &kernel, &user);
    return (uint64_t{kernel.dwLowDateTime} + user.dwLowDateTime) / 10000; // of 100 ns
}

// In some half second: a busy machine charges some of its time to others.
static bool isIdle() {
    return waitUntil(
        [] {
            const uint64_t before = processorMilliseconds();
            Sleep(500);
            return processorMilliseconds() - before < 50;
        },
        3000);
}

// One test, since the listener's thread runs until the process ends.
TEST(DeviceEventListener, FindsReceiversThatComeAndTouchesNoClosedWindow) {
    std::atomic<uint8_t> switchState{1};
    auto button = std::make_unique<QPushButton>();
    auto listener = std::make_unique<DeviceEventListener>(switchState, *button);
    EXPECT_TRUE(isIdle()) << "without a receiver";

    const auto tell = [&] { listener->devicesChanged(); };
    for (const wchar_t *id : {L"VID_040B&PID_F778&MI_03", PluggedReceiver::kReceiver}) {
        PluggedReceiver receiver(id);
        ASSERT_TRUE(receiver.waitForListener(tell)) << id;
        tell(); // of another device: this one stays open
        receiver.input(PluggedReceiver::keyEvent());
        EXPECT_EQ(receiver.nextWrite(), PluggedReceiver::keyEvent(0)) << "the opposite of the switch";
    }
    EXPECT_TRUE(isIdle()) << "after the receiver was unplugged, before Windows tells of it";

    PluggedReceiver receiver;
    ASSERT_TRUE(receiver.waitForListener(tell));
    receiver.input(PluggedReceiver::keyEvent());
    listener.reset(); // in the middle of it
    button.reset();
    while (!receiver.nextWrite(500).empty()) {
    }
    receiver.input(PluggedReceiver::keyEvent());
    EXPECT_TRUE(receiver.nextWrite(500).empty()) << "still answers";
}
