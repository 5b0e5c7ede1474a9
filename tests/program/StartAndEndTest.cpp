// Start-up, handover and every way in which the process ends, with the real program.
#include "helpers/ProductSettings.h"
#include "helpers/Registry.h"
#include "program/FormMap.h"
#include "program/Panel.h"

#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>
#include <process.h>

namespace {

using ProductSettings::kProductKey;

class StartAndEndTest : public testing::Test {
protected:
    void SetUp() override { Panel::prepare(); }

    static void expectShutDown(const Panel &panel) {
        EXPECT_EQ(0, panel.waitForEnd());
        const std::vector<std::string> journal = panel.journal("");
        ASSERT_GE(journal.size(), 3u);
        auto call = journal.end() - 3;
        for (const char *expected :
             {"_kill_task(\"normal.exe\")", "setDeviceProperty(type 1", "releaseDeviceInfo("})
            EXPECT_EQ(0u, (call++)->find(expected)) << call[-1];
    }

    FormMap map;
};

// By its button, or by the system (Alt+F4, the taskbar), also while the start tip's own event loop runs.
TEST_F(StartAndEndTest, ClosingEndsOrHides) {
    for (const bool bySystem : {false, true}) {
        for (const bool hides : {false, true}) {
            Registry::WriteDwordValue(kProductKey, L"isAddSysicon", hides);
            Registry::WriteDwordValue(kProductKey, L"isStartShow", bySystem);
            Panel panel;
            ASSERT_TRUE(panel.startAndShow());
            const auto gone = [&] { return !IsWindowVisible(panel.window()); };
            if (bySystem)
                PostMessageW(panel.window(), WM_CLOSE, 0, 0);
            else
                panel.click({map.centreOf("pushButton")}, gone);
            EXPECT_TRUE(waitUntil(gone));
            if (hides)
                EXPECT_TRUE(panel.running());
            else
                expectShutDown(panel);
        }
    }
}

TEST_F(StartAndEndTest, TheSessionsEndShutsTheDeviceDown) {
    for (const int show : {SW_SHOW, SW_MINIMIZE, SW_HIDE}) {
        Panel panel;
        ASSERT_TRUE(panel.startAndShow());
        ShowWindow(panel.window(), show);
        for (const BOOL ends : {FALSE, TRUE}) {
            EXPECT_TRUE(panel.running()) << "somebody else refused";
            DWORD_PTR agrees = 0;
            SendMessageTimeoutW(panel.window(), WM_QUERYENDSESSION, 0, ENDSESSION_LOGOFF, 0, 20000, &agrees);
            EXPECT_TRUE(agrees);
            SendMessageTimeoutW(panel.window(), WM_ENDSESSION, ends, ENDSESSION_LOGOFF, 0, 20000, &agrees);
        }
        expectShutDown(panel);
    }
}

TEST_F(StartAndEndTest, NewerInstanceTakesOver) {
    Panel older;
    ASSERT_TRUE(older.startAndShow());
    Panel newer;
    newer.start();
    expectShutDown(older);
    EXPECT_TRUE(newer.waitForWindow());
    EXPECT_EQ(0u, Registry::ReadDwordValue(kProductKey, L"exitCmd"));

    // One that sits in a message box still ends.
    EXPECT_TRUE(newer.click({map.centreOf("bt_y11"), map.centreOf("pushButton_11")},
                            [&] { return newer.systemDialog() != nullptr; }));
    Panel newest;
    newest.start();
    expectShutDown(newer);
    EXPECT_TRUE(newest.waitForWindow());
}

TEST_F(StartAndEndTest, OneOfManyStaysAndItIsTheNewest) {
    // While the second is being built, which the device library holds back, a third one comes and is ready
    // first.
    Panel older, held;
    ASSERT_TRUE(older.startAndShow());
    held.start();
    Registry::WriteDwordValue(kSimulatorKey, L"HeldBack", held.processId());
    expectShutDown(older);
    ASSERT_TRUE(waitUntil([&] { return !held.journal("getDeviceCount(").empty(); }));
    Panel newest;
    ASSERT_TRUE(newest.startAndShow());
    Registry::WriteDwordValue(kSimulatorKey, L"HeldBack", 0);
    expectShutDown(held);
    EXPECT_EQ(-1000, newest.waitForEnd(500));
    EXPECT_EQ(0u, Registry::ReadDwordValue(kProductKey, L"exitCmd"));

    Panel together[3];
    for (Panel &panel : together)
        panel.start();
    expectShutDown(newest);
    const auto running = [&] {
        return std::count_if(std::begin(together), std::end(together),
                             [](const Panel &panel) { return panel.running(); });
    };
    EXPECT_TRUE(waitUntil([&] { return running() == 1; }));
    EXPECT_FALSE(waitUntil([&] { return running() == 0; }, 1000));
}

TEST_F(StartAndEndTest, NewerInstanceRunsBesideOneThatHangs) {
    Panel older;
    ASSERT_TRUE(older.startAndShow());
    DebugActiveProcess(older.processId()); // stops all its threads
    Panel newer;
    EXPECT_TRUE(newer.startAndShow());
    EXPECT_EQ(0u, Registry::ReadDwordValue(kProductKey, L"exitCmd"));
    EXPECT_EQ(-1000, newer.waitForEnd(500)) << "followed its own request";
    DebugActiveProcessStop(older.processId());
    expectShutDown(older); // follows late
}

TEST_F(StartAndEndTest, EndsBeforeItsWindow) {
    const struct {
        const char *knob, *value, *usual;
        const wchar_t *text; // null: no box
        int exitCode;
    } cases[] = {{"DeviceCount", "0", "1", L"Can't connect to device", 0},
                 {"InitResult", "-1", "0", L"install driver FAILED", 0},
                 {"DeviceInfoResult", "0xFFFFFFFE", "0", L"get device info FAILED", 0},
                 {"ForceElevated", "0", "0", nullptr, 1}, // stays so for the next
                 {"RestartResult", "0", "0", nullptr, -1}};
    const auto setKnob = [](const char *knob, const char *value) {
        EXPECT_EQ(_spawnl(_P_WAIT, HEADSET, "headset", "set", knob, value, nullptr), 0);
    };
    Registry::WriteDwordValue(kProductKey, L"exitCmd", 1); // as for an instance that did not answer
    for (const auto &c : cases) {
        setKnob(c.knob, c.value);
        Panel panel;
        panel.start();
        if (c.text) {
            EXPECT_EQ(c.text, panel.answerBox());
        }
        EXPECT_EQ(c.exitCode, panel.waitForEnd());
        EXPECT_EQ(0u, Registry::ReadDwordValue(kProductKey, L"exitCmd"));
        EXPECT_FALSE(panel.journal("").empty());
        EXPECT_TRUE(panel.journal("releaseDeviceInfo(").empty());
        EXPECT_TRUE(panel.journal("setDeviceProperty(").empty());
        setKnob(c.knob, c.usual);
    }
}

TEST_F(StartAndEndTest, BadInputStartsAllTheSame) {
    Registry::WriteStringValue(kProductKey, L"isAddSysicon", L"yes");
    Registry::WriteDwordValue(kProductKey, L"DisplayName", 1);
    Registry::WriteStringValue(kProductKey, L"language", L"en");
    Registry::WriteDwordValue(kSimulatorKey, L"StartImage", 2);                  // all 0xFF
    std::filesystem::create_directories(Panel::folder() + L"\\config\\eqs.bin"); // not a file
    EXPECT_TRUE(Panel().startAndShow());
    Registry::DeleteKey(kProductKey);
    Panel panel;
    EXPECT_TRUE(panel.startAndShow());
    EXPECT_EQ(-1000, panel.waitForEnd(300)) << "timers run, too";
}

} // namespace
