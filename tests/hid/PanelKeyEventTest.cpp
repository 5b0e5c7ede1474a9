// The real program with a virtual receiver plugged in: the headset's own button, all the way to the property
// block and back.
#include "helpers/ProductSettings.h"
#include "helpers/Registry.h"
#include "hid/VirtualHid.h"
#include "program/Panel.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace {

using Report = VirtualHid::Report;

constexpr char kSoundBlockWrite[] = "setDeviceProperty(type 2, 0: ";
constexpr DWORD kListenerPauseMs = 200; // what it makes after each report, and some more

class PanelKeyEventTest : public testing::Test {
protected:
    void SetUp() override {
        hid.unplugAll();
        Panel::prepare();
    }
    void TearDown() override { hid.unplugAll(); }

    // Returns when the window is there and its listener has this receiver.
    void start(const std::wstring &receiver = VirtualHid::kReceiver) {
        hid.plug(receiver);
        const ULONG before = hid.settledHandles();
        panel.start();
        ASSERT_TRUE(panel.waitForWindow());
        ASSERT_TRUE(hid.waitForMoreHandles(before)) << "the panel opened no receiver";
    }

    // The first two bytes of every SoundBlock that was written, such as "00 01".
    std::vector<std::string> writtenSwitches() const {
        std::vector<std::string> result;
        for (const std::string &line : panel.ownJournal()) {
            if (line.rfind(kSoundBlockWrite, 0) == 0)
                result.push_back(line.substr(sizeof kSoundBlockWrite - 1, 5));
        }
        return result;
    }

    // As answer: with the switch's new state.
    static Report keyReport(uint8_t state = 0) {
        Report report{2, 0xFF, 0xFF, 0xFF, 0xFF, 0x01, state};
        report.resize(65);
        return report;
    }

    VirtualHid hid;
    Panel panel;
};

TEST_F(PanelKeyEventTest, TogglesTheBlockAndAnswersTheReceiver) {
    start();
    const std::vector<std::string> atStart = writtenSwitches();
    for (size_t byte = 0; byte <= 5; ++byte) { // no key events: another byte or report, or a short report
        Report other = keyReport();
        other[byte] ^= 0x03;
        hid.input(other);
        Sleep(kListenerPauseMs);
    }
    hid.input(Report{2, 0xFF, 0xFF, 0xFF, 0xFF, 0x01});
    EXPECT_EQ(hid.nextWrite(kListenerPauseMs), Report());
    EXPECT_EQ(writtenSwitches(), atStart);

    uint8_t state = atStart.back().back() == '1';
    std::vector<std::string> written = atStart;
    for (int press = 0; press < 3; ++press) {
        state ^= 1;
        written.push_back(atStart.back().substr(0, 3) + (state ? "01" : "00"));
        hid.input(keyReport());
        EXPECT_EQ(hid.nextWrite(5000), keyReport(state)) << "answer " << press;
        EXPECT_TRUE(waitUntil([&] { return writtenSwitches() == written; })) << "block " << press;
        Sleep(kListenerPauseMs);
    }
    EXPECT_EQ(hid.nextWrite(0), Report()) << "one answer for each";
}

TEST_F(PanelKeyEventTest, UnpluggingLeavesThePanelAlone) {
    const std::wstring secondModel = L"VID_040B&PID_F778&MI_03";
    start(secondModel);
    hid.holdWrites(true);
    hid.input(keyReport()); // the answer to this one is under way when the receiver goes
    EXPECT_TRUE(waitUntil([&] { return hid.counters().heldWrites == 1; }));
    hid.unplug(secondModel);
    Sleep(300);
    EXPECT_TRUE(panel.running());
    DWORD_PTR answered = 0;
    EXPECT_NE(SendMessageTimeoutW(panel.window(), WM_NULL, 0, 0, SMTO_NORMAL, 2000, &answered), 0) << "hangs";
}

TEST_F(PanelKeyEventTest, AnAnswerThatIsNeverTakenDoesNotKeepThePanelFromEnding) {
    start();
    hid.holdWrites(true);
    hid.input(keyReport());
    EXPECT_TRUE(waitUntil([&] { return hid.counters().heldWrites == 1; }));
    Registry::WriteDwordValue(ProductSettings::kProductKey, L"exitCmd", 1);
    EXPECT_EQ(panel.waitForEnd(), 0);
}

} // namespace
