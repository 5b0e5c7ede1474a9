// Start-up, handover and every way in which the process ends, with the real program.
#include "helpers/ProductSettings.h"
#include "helpers/Registry.h"
#include "program/FormMap.h"
#include "program/Panel.h"

#include <filesystem>
#include <gtest/gtest.h>

namespace {

using ProductSettings::kProductKey;
const std::wstring kSimulator = L"HKEY_CURRENT_USER\\Software\\QorSoundKit Simulator";

class StartAndEndTest : public testing::Test {
protected:
    void SetUp() override { Panel::prepare(); }

    static bool beginsWith(const std::string &text, const std::string &start) {
        return text.compare(0, start.size(), start) == 0;
    }

    static void expectShutDown(const Panel &panel) {
        const std::vector<std::string> journal = panel.ownJournal();
        ASSERT_GE(journal.size(), 3u);
        EXPECT_TRUE(beginsWith(journal[journal.size() - 3], "_kill_task(\"normal.exe\")"))
            << journal[journal.size() - 3];
        EXPECT_TRUE(beginsWith(journal[journal.size() - 2], "setDeviceProperty(type 1"))
            << journal[journal.size() - 2];
        EXPECT_TRUE(beginsWith(journal.back(), "releaseDeviceInfo(")) << journal.back();
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
                EXPECT_TRUE(giveUntil([&] { PostMessageW(panel.window(), WM_CLOSE, 0, 0); }, gone));
            else
                EXPECT_TRUE(panel.click({map.centreOf("pushButton")}, gone));
            if (hides) {
                EXPECT_TRUE(panel.running());
            } else {
                EXPECT_EQ(0, panel.waitForEnd());
                expectShutDown(panel);
            }
        }
    }
}

TEST_F(StartAndEndTest, TheSessionsEndShutsTheDeviceDown) {
    for (const int show : {SW_SHOW, SW_MINIMIZE, SW_HIDE}) {
        Panel panel;
        ASSERT_TRUE(panel.startAndShow());
        ShowWindow(panel.window(), show);
        DWORD_PTR agrees = 0;
        SendMessageTimeoutW(panel.window(), WM_QUERYENDSESSION, 0, ENDSESSION_LOGOFF, 0, 20000, &agrees);
        EXPECT_TRUE(agrees);
        SendMessageTimeoutW(panel.window(), WM_ENDSESSION, FALSE, ENDSESSION_LOGOFF, 0, 20000, &agrees);
        EXPECT_TRUE(panel.running()) << "somebody else refused";
        SendMessageTimeoutW(panel.window(), WM_QUERYENDSESSION, 0, ENDSESSION_LOGOFF, 0, 20000, &agrees);
        SendMessageTimeoutW(panel.window(), WM_ENDSESSION, TRUE, ENDSESSION_LOGOFF, 0, 20000, &agrees);
        EXPECT_EQ(0, panel.waitForEnd());
        expectShutDown(panel);
    }
}

TEST_F(StartAndEndTest, NewerInstanceTakesOver) {
    Panel older;
    ASSERT_TRUE(older.startAndShow());
    Panel newer;
    newer.start();
    EXPECT_EQ(0, older.waitForEnd());
    expectShutDown(older);
    EXPECT_TRUE(newer.waitForWindow());
    EXPECT_EQ(0u, Registry::ReadDwordValue(kProductKey, L"exitCmd"));

    // A window that hides behind the tray icon, or sits in a message box, still ends.
    EXPECT_TRUE(newer.click({map.centreOf("bt_y11"), map.centreOf("pushButton_11")},
                            [&] { return newer.systemDialog() != nullptr; }));
    Panel newest;
    newest.start();
    EXPECT_EQ(0, newer.waitForEnd());
    expectShutDown(newer);
    EXPECT_TRUE(newest.waitForWindow());
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
    EXPECT_EQ(-1000, older.waitForEnd(500));
}

TEST_F(StartAndEndTest, OldInstanceStaysWhereThePollIsOff) {
    Registry::WriteStringValue(kProductKey, L"EnableAllDev", L"true");
    Panel older;
    ASSERT_TRUE(older.startAndShow());
    Panel newer;
    EXPECT_TRUE(newer.startAndShow());
    EXPECT_TRUE(older.running());
}

TEST_F(StartAndEndTest, TwoStartsAtOnceLeaveOneOrBothInOrder) {
    Panel first;
    Panel second;
    first.start();
    second.start();
    // Whoever came second to the name asks the other to end; nobody hangs and nobody crashes.
    EXPECT_TRUE(waitUntil([&] { return !first.running() || !second.running(); }));
    Panel &survivor = first.running() ? first : second;
    EXPECT_TRUE(survivor.waitForWindow());
    EXPECT_EQ(0, (first.running() ? second : first).waitForEnd(0));
}

TEST_F(StartAndEndTest, NoDeviceNoDriverNoRecord) {
    const struct {
        const wchar_t *knob;
        DWORD value;
        const wchar_t *text;
    } cases[] = {{L"DeviceCount", 0, L"Can't connect to device"},
                 {L"InitResult", 0xFFFFFFFF, L"install driver FAILED"},
                 {L"DeviceInfoResult", 0xFFFFFFFE, L"get device info FAILED"}};
    for (const auto &c : cases) {
        Registry::WriteDwordValue(kSimulator, c.knob, c.value);
        Panel panel;
        panel.start();
        EXPECT_EQ(c.text, panel.answerBox());
        EXPECT_EQ(0, panel.waitForEnd());
        for (const std::string &call : panel.ownJournal())
            EXPECT_FALSE(beginsWith(call, "releaseDeviceInfo(") || beginsWith(call, "setDeviceProperty("))
                << call;
        Registry::DeleteValue(kSimulator, c.knob);
    }
}

TEST_F(StartAndEndTest, WithoutDeviceTheRequestToEndIsWithdrawn) {
    Registry::WriteDwordValue(kSimulator, L"DeviceCount", 0);
    Registry::WriteDwordValue(kProductKey, L"exitCmd", 1); // as for an instance that did not answer
    Panel panel;
    panel.start();
    EXPECT_FALSE(panel.answerBox().empty());
    EXPECT_EQ(0, panel.waitForEnd());
    EXPECT_EQ(0u, Registry::ReadDwordValue(kProductKey, L"exitCmd"));
}

TEST_F(StartAndEndTest, NotElevated) {
    Registry::WriteDwordValue(kSimulator, L"ForceElevated", 0);
    for (const DWORD result : {0u, 1u}) {
        Registry::WriteDwordValue(kSimulator, L"RestartResult", result);
        Panel panel;
        panel.start();
        EXPECT_EQ(result ? 1 : -1, panel.waitForEnd());
        EXPECT_EQ(2u, panel.ownJournal().size());
    }
}

TEST_F(StartAndEndTest, BadInputStartsAllTheSame) {
    const std::wstring curves = Panel::folder() + L"\\config\\eqs.bin";
    Registry::WriteStringValue(kProductKey, L"isAddSysicon", L"yes");
    Registry::WriteDwordValue(kProductKey, L"DisplayName", 1);
    Registry::WriteStringValue(kProductKey, L"language", L"en");
    Registry::WriteDwordValue(kSimulator, L"StartImage", 2); // all 0xFF
    std::filesystem::create_directories(curves);             // a folder where the file should be
    {
        Panel panel;
        EXPECT_TRUE(panel.startAndShow());
    }
    Registry::DeleteKey(kProductKey);
    Panel panel;
    EXPECT_TRUE(panel.startAndShow());
    EXPECT_EQ(-1000, panel.waitForEnd(300)) << "timers run, too";
}

} // namespace
