// The program's window among others: what it shows at start, the tray icon, and a session with mouse and
// keyboard whose settings are there in the next instance.
#include "helpers/ProductSettings.h"
#include "program/FormMap.h"
#include "program/Panel.h"
#include "program/StoredSettings.h"

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

template<typename Block>
bool same(const Block &one, const Block &other) {
    return std::memcmp(&one, &other, sizeof one) == 0;
}

class WindowShellTest : public testing::Test {
protected:
    void SetUp() override { Panel::prepare(); }

    HWND trayWindow() const {
        std::pair<DWORD, HWND> found{panel.processId(), nullptr};
        EnumWindows(&matchTray, reinterpret_cast<LPARAM>(&found));
        return found.second;
    }
    void tray(UINT event) const { PostMessageW(trayWindow(), kTrayMessage, 0, MAKELPARAM(event, 0)); }
    // A double click ends with a release of its own, which Qt takes for a part of it.
    void trayDoubleClick() const {
        tray(WM_LBUTTONDBLCLK);
        tray(NIN_SELECT);
    }

    bool isShown() const { return IsWindowVisible(panel.window()) && !IsIconic(panel.window()); }
    bool minimise() {
        return panel.click({map.centreOf("pushButton_1")}, [&] { return IsIconic(panel.window()); });
    }
    bool hide() {
        return panel.click({map.centreOf("pushButton")}, [&] { return !IsWindowVisible(panel.window()); });
    }

    FormMap map;
    Panel panel;
};

TEST_F(WindowShellTest, StartShowsWindowTipAndIconAsStored) {
    Registry::WriteStringValue(kProductKey, L"DisplayName", L"My 耳机");
    Registry::WriteDwordValue(kProductKey, L"isAddSysicon", 1);
    Registry::WriteDwordValue(kProductKey, L"isStartShow", 1);
    ASSERT_TRUE(panel.startAndShow());
    EXPECT_NE(nullptr, trayWindow());
    wchar_t title[64] = L"";
    GetWindowTextW(panel.window(), title, 64);
    EXPECT_STREQ(L"My 耳机", title);
    RECT frame{};
    GetWindowRect(panel.window(), &frame);
    EXPECT_EQ((GetSystemMetrics(SM_CXSCREEN) - 1071) / 2, frame.left);
    EXPECT_EQ((GetSystemMetrics(SM_CYSCREEN) - 869) / 2, frame.top);
    EXPECT_TRUE(Registry::KeyExists(ProductSettings::kUserKey));
    std::string calls;
    for (const std::string &call : panel.ownJournal())
        calls += call.substr(0, call.find('(') + 1);
    EXPECT_EQ(0u, calls.find("_IsRunningAsAdmin(_IsAlreadyRun(getDeviceCount(init(getDeviceInfo(")) << calls;
    // The tip stands in the middle of the window, 400 x 300 pixels; its box is ticked for no more tips.
    const POINT box{1071 / 2 - 200 + 58, 869 / 2 - 150 + 158};
    EXPECT_TRUE(
        panel.click({box}, [] { return Registry::ReadDwordValue(kProductKey, L"isStartShow") == 0; }));
}

TEST_F(WindowShellTest, TrayIconBringsTheWindowBackAndEndsTheProgram) {
    ASSERT_TRUE(panel.startAndShow());
    EXPECT_EQ(nullptr, trayWindow()); // none before it is needed
    ASSERT_TRUE(hide());
    EXPECT_TRUE(giveUntil([&] { tray(NIN_SELECT); }, [&] { return isShown(); }));
    ASSERT_TRUE(hide());
    EXPECT_TRUE(giveUntil([&] { trayDoubleClick(); }, [&] { return isShown(); }));
    // A double click leaves a minimised window minimised, a single click restores it.
    ASSERT_TRUE(minimise());
    trayDoubleClick();
    EXPECT_FALSE(waitUntil([&] { return isShown(); }, 300));
    EXPECT_TRUE(giveUntil([&] { tray(NIN_SELECT); }, [&] { return isShown(); }));
    const auto exit = [&] {
        tray(WM_CONTEXTMENU);
        for (const WORD key : {WORD{VK_DOWN}, WORD{VK_RETURN}})
            panel.press({key}, [] { return true; });
    };
    EXPECT_TRUE(giveUntil(exit, [&] { return !panel.running(); }));
    EXPECT_EQ(0, panel.waitForEnd());
    EXPECT_EQ("releaseDeviceInfo(", panel.ownJournal().back().substr(0, 18));
}

// One control for each of the blocks; what each control does is tested without the mouse.
TEST_F(WindowShellTest, SettingsGoFromOneInstanceToTheNext) {
    Registry::WriteDwordValue(kProductKey, L"language", 0);
    ASSERT_TRUE(panel.startAndShow());
    EXPECT_TRUE(panel.click({map.centreOf("bt_y0"), map.sliderPoint("verticalSlider_4", 10)},
                            [] { return StoredSettings::read().sound.masterVolume < 60; }));
    EXPECT_TRUE(panel.click({map.centreOf("bt_y2"), map.centreOf("btn_jhq5")},
                            [] { return StoredSettings::read().extension.gain[0] == 11; }));
    EXPECT_TRUE(panel.click({map.centreOf("bt_y6"), map.sliderPoint("verticalSlider", 10)},
                            [] { return StoredSettings::read().system.micLevel < 80; }));
    // In the settings dialog: to the list of languages, its next entry, Confirm.
    EXPECT_TRUE(giveUntil(
        [&] {
            panel.click({map.centreOf("pushButton_2")}, [] { return true; });
            for (const WORD key : {WORD{VK_TAB}, WORD{VK_DOWN}, WORD{VK_RETURN}})
                panel.press({key}, [] { return true; });
        },
        [] { return Registry::ReadDwordValue(kProductKey, L"language") == 1; }));

    const StoredSettings before = StoredSettings::read();
    ASSERT_TRUE(minimise());
    const auto snapshot = [](const wchar_t *name) { return Registry::ReadBinaryValue(kProductKey, name); };
    const auto bytesOf = [](const auto &block) {
        const auto *bytes = reinterpret_cast<const uint8_t *>(&block);
        return std::vector<uint8_t>(bytes, bytes + sizeof block);
    };
    EXPECT_EQ(bytesOf(before.sound), snapshot(L"{6F8E9E8B-C370-48D3-A20E-D1CA1D61BB3C}"));
    EXPECT_EQ(bytesOf(before.extension), snapshot(L"{983E6A3C-E1AE-49BD-9E50-8FCB108C3F8D}"));
    EXPECT_EQ(bytesOf(before.system), snapshot(L"{F5530E75-A2A5-43E8-B9DF-1A1E225B5D1A}"));

    Panel second;
    ASSERT_TRUE(second.startAndShow());
    EXPECT_EQ(0, panel.waitForEnd());
    const StoredSettings after = StoredSettings::read();
    EXPECT_TRUE(same(before.system, after.system));
    EXPECT_TRUE(same(before.sound, after.sound));
    EXPECT_TRUE(same(before.extension, after.extension));
}

} // namespace
