// The real program with a virtual receiver plugged in: the headset's own button, all the way to the property
// block and back.
#include "hid/PluggedReceiver.h"
#include "program/Panel.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace {

using Report = PluggedReceiver::Report;

constexpr DWORD kListenerPauseMs = 200; // what it makes after each report, and some more

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

    const std::vector<std::string> atStart = writtenSwitches(panel);
    for (size_t byte = 1; byte <= 5; ++byte) { // no key events
        Report other = PluggedReceiver::keyEvent();
        other[byte] ^= 0x03;
        hid.input(other);
        Sleep(kListenerPauseMs);
    }
    EXPECT_EQ(hid.nextWrite(kListenerPauseMs), Report());
    EXPECT_EQ(writtenSwitches(panel), atStart);

    uint8_t state = atStart.back().back() == '1';
    std::vector<std::string> written = atStart;
    for (int press = 0; press < 3; ++press) {
        state ^= 1;
        written.push_back(atStart.back().substr(0, 3) + (state ? "01" : "00"));
        hid.input(PluggedReceiver::keyEvent());
        EXPECT_EQ(hid.nextWrite(20000), PluggedReceiver::keyEvent(state)) << "answer " << press;
        EXPECT_TRUE(waitUntil([&] { return writtenSwitches(panel) == written; })) << "block " << press;
        Sleep(kListenerPauseMs);
    }
    EXPECT_EQ(hid.nextWrite(0), Report()) << "one answer for each";
}

} // namespace
