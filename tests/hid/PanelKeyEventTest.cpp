// The real program with a virtual receiver plugged in: a key on the headset, all the way to the property
// block.
#include "hid/VirtualHid.h"
#include "program/Panel.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace {

constexpr char kSoundBlockWrite[] = "setDeviceProperty(type 2, 0: ";

class PanelKeyEventTest : public testing::Test {
protected:
    void SetUp() override {
        hid.unplugAll();
        Panel::prepare();
    }
    void TearDown() override { hid.unplugAll(); }

    // Returns when the window is there and its listener has the receiver.
    void start(Panel &panel) {
        const ULONG before = hid.settledHandles();
        panel.start();
        ASSERT_TRUE(panel.waitForWindow());
        ASSERT_TRUE(hid.waitForMoreHandles(before)) << "the panel opened no receiver";
    }

    // The first two bytes of every SoundBlock that was written, such as "00 01".
    static std::vector<std::string> writtenSwitches(const Panel &panel) {
        std::vector<std::string> result;
        for (const std::string &line : panel.ownJournal()) {
            if (line.rfind(kSoundBlockWrite, 0) == 0)
                result.push_back(line.substr(sizeof kSoundBlockWrite - 1, 5));
        }
        return result;
    }

    static VirtualHid::Report keyReport(uint8_t state) {
        VirtualHid::Report report(65);
        const uint8_t head[] = {2, 0xFF, 0xFF, 0xFF, 0xFF, 0x01, state};
        std::copy(std::begin(head), std::end(head), report.begin());
        return report;
    }

    VirtualHid hid;
};

TEST_F(PanelKeyEventTest, TogglesTheBlockAndAnswersTheReceiver) {
    hid.plug();
    Panel panel;
    start(panel);
    const std::string before = writtenSwitches(panel).back();
    const std::string page = before.substr(0, 3);
    ASSERT_TRUE(before == page + "00" || before == page + "01") << before;
    uint8_t state = before.back() == '1';
    for (int press = 0; press < 3; ++press) {
        state ^= 1;
        const size_t writes = writtenSwitches(panel).size();
        hid.input(keyReport(0));
        EXPECT_EQ(hid.nextReport(VHID_WRITE, 5000), keyReport(state)) << "answer " << press;
        EXPECT_TRUE(waitUntil([&] { return writtenSwitches(panel).size() == writes + 1; }))
            << "block " << press;
        EXPECT_EQ(writtenSwitches(panel).back(), page + (state ? "01" : "00"));
        Sleep(200); // the listener's pause
    }
}

TEST_F(PanelKeyEventTest, UnpluggingLeavesThePanelAlone) {
    hid.plug();
    Panel panel;
    start(panel);
    hid.input(keyReport(0));
    ASSERT_FALSE(hid.nextReport(VHID_WRITE, 5000).empty());
    hid.holdWrites(true);
    Sleep(200);
    hid.input(keyReport(0)); // the answer to this one is under way when the receiver goes
    EXPECT_TRUE(waitUntil([&] { return hid.counters().heldWrites == 1; }));
    hid.unplug();
    Sleep(300);
    EXPECT_TRUE(panel.running());
    DWORD_PTR answered = 0;
    EXPECT_NE(SendMessageTimeoutW(panel.window(), WM_NULL, 0, 0, SMTO_NORMAL, 2000, &answered), 0) << "hangs";
}

} // namespace
