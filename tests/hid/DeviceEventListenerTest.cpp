// The listener on a virtual receiver that outlives the window, and on one that goes away.
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

// Milliseconds of processor time that this process has used.
uint64_t processorTime() {
    FILETIME creation{}, exit{}, kernel{}, user{};
    GetProcessTimes(GetCurrentProcess(), &creation, &exit, &kernel, &user);
    return (uint64_t{kernel.dwLowDateTime} + user.dwLowDateTime) / 10000; // of 100 ns
}

// One test, since the listener keeps its device until the process ends.
TEST(DeviceEventListener, TouchesNoClosedWindowAndPollsALostDeviceAtItsUsualPace) {
    PluggedReceiver hid;
    volatile uint8_t switchByte = 1;
    int clicks = 0;
    QObject context;
    auto button = std::make_unique<QPushButton>();
    QObject::connect(button.get(), &QPushButton::clicked, &context, [&] { ++clicks; });

    startDeviceEventListener(&switchByte, button.get());
    ASSERT_TRUE(hid.waitForListener());
    EXPECT_TRUE(QTest::qWaitFor([&] { return clicks > 0; }));
    std::atomic<bool> stop{false};
    std::thread keys([&] {
        while (!stop) {
            hid.input(PluggedReceiver::keyEvent());
            Sleep(1);
        }
    });
    EXPECT_EQ(hid.nextWrite(), PluggedReceiver::keyEvent(0)) << "the opposite of the switch";
    detachDeviceEventListener();
    button.reset();
    Sleep(300);
    while (!hid.nextWrite(0).empty()) {
    } // what was under way
    EXPECT_TRUE(hid.nextWrite(500).empty()) << "still answers";
    stop = true;
    keys.join();

    hid.unplug();
    Sleep(200);
    uint64_t used =
        1000; // in the quietest of some seconds: a busy machine charges some of its time to others
    for (int second = 0; second < 4 && used >= 100; ++second) {
        const uint64_t before = processorTime();
        Sleep(1000);
        used = std::min(used, processorTime() - before);
    }
    EXPECT_LT(used, 100u) << "an unplugged device burns a core";
}

} // namespace
