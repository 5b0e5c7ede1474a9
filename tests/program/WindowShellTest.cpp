// The frameless window's own behaviour: dragging, minimising with its snapshots, tray icon, navigation.
#include "helpers/ProductSettings.h"
#include "helpers/Registry.h"
#include "program/FormMap.h"
#include "program/Panel.h"

#include <gtest/gtest.h>
#include <shellapi.h>

namespace {

using ProductSettings::kProductKey;
constexpr UINT kTrayMessage = WM_APP + 101; // what Qt registers its tray icons with

BOOL CALLBACK matchTray(HWND window, LPARAM argument) {
    auto &found = *reinterpret_cast<std::pair<DWORD, HWND> *>(argument);
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    wchar_t name[128] = L"";
    GetClassNameW(window, name, 128);
    if (process != found.first || std::wstring(name).find(L"TrayIconMessageWindow") == std::wstring::npos)
        return TRUE;
    found.second = window;
    return FALSE;
}

HWND trayWindow(DWORD process) {
    std::pair<DWORD, HWND> found{process, nullptr};
    EnumWindows(&matchTray, reinterpret_cast<LPARAM>(&found));
    return found.second;
}

class WindowShellTest : public testing::Test {
protected:
    void SetUp() override {
        Panel::prepare();
        panel.start();
        ASSERT_TRUE(panel.waitForWindow());
        Sleep(200); // past the one-shot re-layout
    }

    RECT frame() const {
        RECT rect{};
        GetWindowRect(panel.window(), &rect);
        return rect;
    }

    // A double click ends with a release of its own, which Qt takes for a part of it.
    void trayDoubleClick() const {
        tray(WM_LBUTTONDBLCLK);
        tray(NIN_SELECT);
    }

    void tray(UINT event) const {
        PostMessageW(trayWindow(panel.processId()), kTrayMessage, 0, MAKELPARAM(event, 0));
    }

    FormMap map;
    Panel panel;
};

TEST_F(WindowShellTest, OnlyALeftPressOnTheTopBarDrags) {
    EXPECT_TRUE(panel.dragWindow({400, 30}, {50, 40}));
    Sleep(100); // for the release
    const RECT before = frame();
    panel.drag({400, 850}, {450, 800}); // below the top bar
    EXPECT_EQ(before.left, frame().left);
    panel.rightClick({400, 30});
    panel.press(VK_ESCAPE);
    SetCursorPos(300, 300);
    Sleep(50);
    EXPECT_EQ(before.left, frame().left);
}

TEST_F(WindowShellTest, MinimiseWritesTheSnapshots) {
    panel.click(map.sliderPoint("verticalSlider_4", 20)); // a page step
    Sleep(100);
    panel.click(map.centreOf("pushButton_1"));
    EXPECT_TRUE(waitUntil([&] { return IsIconic(panel.window()); }));
    const auto snapshot = [](const wchar_t *name) { return Registry::ReadBinaryValue(kProductKey, name); };
    const auto stored = [](const wchar_t *name) {
        return Registry::ReadBinaryValue(L"HKEY_CURRENT_USER\\Software\\QorSoundKit Simulator", name);
    };
    const std::vector<uint8_t> sound = snapshot(L"{6F8E9E8B-C370-48D3-A20E-D1CA1D61BB3C}");
    EXPECT_EQ(stored(L"SoundBlock"), sound);
    EXPECT_EQ(32u, snapshot(L"{983E6A3C-E1AE-49BD-9E50-8FCB108C3F8D}").size());
    EXPECT_EQ(stored(L"SystemHead"), snapshot(L"{F5530E75-A2A5-43E8-B9DF-1A1E225B5D1A}"));
    ASSERT_EQ(575u, sound.size());
    EXPECT_LT(sound[8], 60); // the slider had moved
}

TEST_F(WindowShellTest, TrayIconBringsTheWindowBack) {
    EXPECT_EQ(nullptr, trayWindow(panel.processId())); // none before it is needed
    panel.click(map.centreOf("pushButton"));
    ASSERT_TRUE(waitUntil([&] { return !IsWindowVisible(panel.window()); }));
    ASSERT_NE(nullptr, trayWindow(panel.processId()));
    tray(NIN_SELECT);
    EXPECT_TRUE(waitUntil([&] { return IsWindowVisible(panel.window()) != 0; }));

    panel.click(map.centreOf("pushButton"));
    ASSERT_TRUE(waitUntil([&] { return !IsWindowVisible(panel.window()); }));
    trayDoubleClick();
    EXPECT_TRUE(waitUntil([&] { return IsWindowVisible(panel.window()) != 0; }));

    // A double click leaves a minimised window minimised, a single click restores it.
    panel.click(map.centreOf("pushButton_1"));
    ASSERT_TRUE(waitUntil([&] { return IsIconic(panel.window()); }));
    trayDoubleClick();
    Sleep(300);
    EXPECT_TRUE(IsIconic(panel.window()));
    tray(NIN_SELECT);
    EXPECT_TRUE(waitUntil([&] { return !IsIconic(panel.window()); }));
}

} // namespace
