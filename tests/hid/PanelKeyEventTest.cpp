// The real program with a virtual receiver: the headset's own button, to the property block and back.
#include "hid/PluggedReceiver.h"
#include "program/Panel.h"

#include <dbt.h>
#include <gtest/gtest.h>

TEST(PanelKeyEvent, TogglesTheBlockAndAnswersTheReceiverThatComesLate) {
    Panel::prepare();
    Panel panel;
    ASSERT_TRUE(panel.startAndShow());
    const auto batteryRequests = [&] { return panel.journal("_hid_trans_data(").size(); };
    PluggedReceiver hid; // stays: Wine's kernel sometimes reads on from a device that was unplugged, and ends
    // Wine's own message stays away when its Plug and Play service has ended.
    const auto tell = [&] { PostMessageW(panel.window(), WM_DEVICECHANGE, DBT_DEVNODES_CHANGED, 0); };
    ASSERT_TRUE(hid.waitForListener(tell));
    // Just after a regular request for the battery, the next of which would come 5 s later.
    const size_t before = batteryRequests();
    ASSERT_TRUE(waitUntil([&] { return batteryRequests() > before; }));
    tell();
    EXPECT_TRUE(waitUntil([&] { return batteryRequests() > before + 1; }, 4000));

    // Up to the second byte of the sound block, such as "...0: 00 01".
    const auto written = [&] { return panel.journal("setDeviceProperty(type 2, 0: ").back().substr(0, 34); };
    std::string expected = written();
    for (size_t byte = 1; byte <= 5; ++byte) {
        PluggedReceiver::Report other = PluggedReceiver::keyEvent();
        other[byte] ^= 0x03;
        hid.input(other); // no key event
        hid.input(PluggedReceiver::keyEvent());
        expected.back() ^= 1; // '0' or '1'
        EXPECT_EQ(hid.nextWrite(20000), PluggedReceiver::keyEvent(expected.back() & 1)) << byte;
        EXPECT_TRUE(waitUntil([&] { return written() == expected; })) << byte;
    }
}
