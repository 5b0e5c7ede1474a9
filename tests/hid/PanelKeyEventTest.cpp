// The real program with a virtual receiver plugged in: the headset's own button, all the way to the property
// block and back.
#include "hid/PluggedReceiver.h"
#include "program/Panel.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace {

using Report = PluggedReceiver::Report;

// The first two bytes of every SoundBlock that was written, such as "00 01".
std::vector<std::string> writtenSwitches(const Panel &panel) {
    const std::string soundBlockWrite = "setDeviceProperty(type 2, 0: ";
    std::vector<std::string> result;
    for (const std::string &line : panel.ownJournal()) {
        if (line.rfind(soundBlockWrite, 0) == 0)
            result.push_back(line.substr(soundBlockWrite.size(), 5));
    }
    return result;
}

size_t batteryRequests(const Panel &panel) {
    size_t count = 0;
    for (const std::string &line : panel.ownJournal())
        count += line.rfind("_hid_trans_data(", 0) == 0;
    return count;
}

TEST(PanelKeyEvent, TogglesTheBlockAndAnswersTheReceiverWheneverItComes) {
    PluggedReceiver hid;
    hid.unplug();
    Panel::prepare();
    Panel panel;
    panel.start();
    ASSERT_TRUE(panel.waitForWindow());
    for (int plugged = 0; plugged < 2; ++plugged) {
        // Just after a regular request for the battery, the next of which would come 5 s later.
        const size_t before = batteryRequests(panel);
        ASSERT_TRUE(waitUntil([&] { return batteryRequests(panel) > before; }));
        const DWORD start = GetTickCount();
        hid.plug();
        EXPECT_TRUE(waitUntil([&] { return batteryRequests(panel) > before + 1; }));
        EXPECT_LT(GetTickCount() - start, 4000u);
        ASSERT_TRUE(hid.waitForListener());
        hid.unplug();
    }
    hid.plug();
    ASSERT_TRUE(hid.waitForListener());

    std::vector<std::string> written = writtenSwitches(panel);
    const std::string firstByte = written.back().substr(0, 3);
    uint8_t state = written.back().back() == '1';
    for (size_t byte = 1; byte <= 5; ++byte) {
        Report other = PluggedReceiver::keyEvent();
        other[byte] ^= 0x03;
        hid.input(other); // no key event
        hid.input(PluggedReceiver::keyEvent());
        state ^= 1;
        written.push_back(firstByte + (state ? "01" : "00"));
        EXPECT_EQ(hid.nextWrite(20000), PluggedReceiver::keyEvent(state)) << byte;
        EXPECT_TRUE(waitUntil([&] { return writtenSwitches(panel) == written; })) << byte;
    }
}

} // namespace
