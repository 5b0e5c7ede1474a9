// The program's window among others: what it shows at start, the tray icon, and settings that are there in
// the next instance.
#include "helpers/ProductSettings.h"
#include "helpers/Registry.h"
#include "program/FormMap.h"
#include "program/Panel.h"

#include <gtest/gtest.h>
#include <shellapi.h>

namespace {

using ProductSettings::kProductKey;
constexpr UINT kTrayMessage = WM_APP + 101; // what Qt registers its tray icons with

class WindowShellTest : public testing::Test {
protected:
    void SetUp() override { Panel::prepare(); }

    HWND trayWindow() const { return findWindow(panel.processId(), L"TrayIconMessageWindow", true); }
    void tray(UINT event) const { PostMessageW(trayWindow(), kTrayMessage, 0, MAKELPARAM(event, 0)); }
    // A double click ends with a release of its own, which Qt takes for a part of it.
    void trayDoubleClick() const {
        tray(WM_LBUTTONDBLCLK);
        tray(NIN_SELECT);
    }

    bool isShown() const { return IsWindowVisible(panel.window()) && !IsIconic(panel.window()); }
    bool leave(const char *button) {
        return panel.click({map.centreOf(button)}, [&] { return !isShown(); });
    }

    FormMap map;
    Panel panel;
};

TEST_F(WindowShellTest, StartShowsWindowTipAndIconAsStored) {
    Registry::WriteStringValue(kProductKey, L"DisplayName", L"My 耳机");
    Registry::WriteDwordValue(kProductKey, L"isAddSysicon", 1);
    Registry::WriteDwordValue(kProductKey, L"isStartShow", 5);
    ASSERT_TRUE(panel.startAndShow());
    EXPECT_NE(nullptr, trayWindow());
    wchar_t title[64] = L"";
    GetWindowTextW(panel.window(), title, 64);
    EXPECT_STREQ(L"My 耳机", title);
    EXPECT_TRUE(Registry::KeyExists(ProductSettings::kUserKey));
    std::string calls;
    for (const std::string &call : panel.journal(""))
        calls += call.substr(0, call.find('(') + 1);
    EXPECT_EQ(0u, calls.find("_IsRunningAsAdmin(_IsAlreadyRun(getDeviceCount(init(getDeviceInfo(")) << calls;
    // The tip stands in the middle of the window, 400 x 300 pixels; its box comes up without a tick.
    const POINT box{1071 / 2 - 200 + 58, 869 / 2 - 150 + 158};
    for (const DWORD ticked : {1, 0})
        EXPECT_TRUE(panel.click(
            {box}, [&] { return Registry::ReadDwordValue(kProductKey, L"isStartShow") == ticked; }));
}

TEST_F(WindowShellTest, TrayIconBringsTheWindowBackAndEndsTheProgram) {
    ASSERT_TRUE(panel.startAndShow());
    EXPECT_EQ(nullptr, trayWindow()); // none before it is needed
    ASSERT_TRUE(leave("pushButton"));
    trayDoubleClick();
    EXPECT_TRUE(waitUntil([&] { return isShown(); }));
    // A double click leaves a minimised window minimised, a single click restores it.
    ASSERT_TRUE(leave("pushButton_1"));
    trayDoubleClick();
    EXPECT_FALSE(waitUntil([&] { return isShown(); }, 300));
    tray(NIN_SELECT);
    EXPECT_TRUE(waitUntil([&] { return isShown(); }));
    tray(WM_CONTEXTMENU);
    ASSERT_TRUE(waitUntil([&] { return findWindow(panel.processId(), L"QWindowPopup") != nullptr; }));
    for (const BYTE key : {BYTE{VK_DOWN}, BYTE{VK_RETURN}}) {
        keybd_event(key, 0, 0, 0);
        keybd_event(key, 0, KEYEVENTF_KEYUP, 0);
    }
    EXPECT_EQ(0, panel.waitForEnd());
    EXPECT_EQ(1u, panel.journal("releaseDeviceInfo(").size());
}

// One control for each of the blocks; what each control does is tested without the mouse.
TEST_F(WindowShellTest, SettingsAreKeptOnMinimisingAndByTheNextInstance) {
    const struct {
        const wchar_t *stored, *snapshot;
        const char *page, *control, *write;
    } blocks[] = {
        {L"SoundBlock", L"{6F8E9E8B-C370-48D3-A20E-D1CA1D61BB3C}", "bt_y0", "pushButton_13",
         "setDeviceProperty(type 2"},
        {L"ExtBlock", L"{983E6A3C-E1AE-49BD-9E50-8FCB108C3F8D}", "bt_y2", "btn_jhq5",
         "setDeviceProperty(type 3"},
        {L"SystemHead", L"{F5530E75-A2A5-43E8-B9DF-1A1E225B5D1A}", "bt_y6", "pushButton_5",
         "setDeviceProperty(type 1"},
    };
    ASSERT_TRUE(panel.startAndShow());
    for (const auto &block : blocks) {
        const size_t before = panel.journal(block.write).size();
        EXPECT_TRUE(panel.click({map.centreOf(block.page), map.centreOf(block.control)},
                                [&] { return panel.journal(block.write).size() > before; }));
    }
    ASSERT_TRUE(leave("pushButton_1"));
    const auto expectKept = [&] {
        for (const auto &block : blocks)
            EXPECT_EQ(Registry::ReadBinaryValue(kSimulatorKey, block.stored),
                      Registry::ReadBinaryValue(kProductKey, block.snapshot));
    };
    expectKept();
    Panel second;
    ASSERT_TRUE(second.startAndShow());
    EXPECT_EQ(0, panel.waitForEnd());
    expectKept();
}

} // namespace
