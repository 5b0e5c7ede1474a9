// What the program holds (handles, GDI and USER objects, memory) stays the same however often its controls
// are used. Each test uses a control some times before it counts, so that caches and what the first use of a
// library keeps do not count.
#include "helpers/ProductSettings.h"
#include "helpers/Registry.h"
#include "program/FormMap.h"
#include "program/Panel.h"
#include "program/StoredSettings.h"
#include "support/ProcessHoldings.h"

#include <cstdio>
#include <functional>
#include <gtest/gtest.h>

namespace {

using ProductSettings::kProductKey;

class LeakTest : public testing::Test {
protected:
    void SetUp() override {
        Panel::prepare();
        Registry::WriteDwordValue(kProductKey, L"language", 0);
        Registry::DeleteValue(L"HKEY_CURRENT_USER\\Software\\QorSoundKit Simulator",
                              L"JournalPath"); // no line for each of the calls
        panel.start();
        ASSERT_TRUE(panel.waitForWindow());
        Sleep(250); // past the one-shot re-layout
    }

    void click(const char *control) { panel.click(map.centreOf(control)); }

    // Dialogs are drawn inside the main window. Where the upper edge of both is, the page looks different.
    COLORREF colourAtDialog() const {
        POINT at{kDialogEdge};
        ClientToScreen(panel.window(), &at);
        const HDC screen = GetDC(nullptr);
        const COLORREF colour = GetPixel(screen, at.x, at.y);
        ReleaseDC(nullptr, screen);
        return colour;
    }

    bool dialogIsOpen() const { return colourAtDialog() != pageColour_; }

    void openDialog(const char *button) {
        pageColour_ = colourAtDialog();
        click(button);
        ASSERT_TRUE(waitUntil([&] { return dialogIsOpen(); })) << button;
    }

    ProcessHoldings settledHoldings() const {
        Sleep(300); // deferred deletes, timers
        return ProcessHoldings::settled(panel.processId());
    }

    // Faster than a hand. Positive notches turn the wheel away from the user.
    static void turnWheel(int notches) {
        const int direction = notches > 0 ? WHEEL_DELTA : -WHEEL_DELTA;
        INPUT input{};
        input.type = INPUT_MOUSE;
        input.mi.dwFlags = MOUSEEVENTF_WHEEL;
        input.mi.mouseData = static_cast<DWORD>(direction);
        std::vector<INPUT> inputs(static_cast<size_t>(std::abs(notches)), input);
        SendInput(static_cast<UINT>(inputs.size()), inputs.data(), sizeof input);
        Sleep(static_cast<DWORD>(3 * inputs.size()));
    }

    // use() leads back to the state it began in.
    void expectNothingKept(int warmUps, int times, const std::function<void()> &use) {
        for (int i = 0; i < warmUps && !HasFatalFailure(); ++i)
            use();
        const ProcessHoldings before = settledHoldings();
        ASSERT_GT(before.handles, 0u);
        ASSERT_GT(before.gdiObjects, 0u);
        ASSERT_GT(before.windows, 0u);
        ASSERT_GT(before.privateKilobytes, 0u);
        for (int i = 0; i < times && !HasFatalFailure(); ++i)
            use();
        ASSERT_TRUE(panel.running());
        const ProcessHoldings after = settledHoldings();
        // A leak keeps one of each use, 100 or more.
        EXPECT_LE(after.handles, before.handles + ProcessHoldings::kHandleNoise);
        EXPECT_LE(after.gdiObjects, before.gdiObjects);
        EXPECT_LE(after.windows, before.windows);
        EXPECT_LE(after.privateKilobytes, before.privateKilobytes + kHeapNoiseKilobytes);
        std::printf("handles %zu -> %zu, GDI %zu -> %zu, windows %zu -> %zu, private %zu -> %zu KB\n",
                    before.handles, after.handles, before.gdiObjects, after.gdiObjects, before.windows,
                    after.windows, before.privateKilobytes, after.privateKilobytes);
    }

    // The heap grows and shrinks by its own rules. Blocks that leak fill what start-up left free in it before
    // it grows, so some 2 MB in all go unnoticed: this finds kilobytes a use, not bytes.
    static constexpr size_t kHeapNoiseKilobytes = 512;

    static constexpr POINT kDialogEdge{1071 / 2 - 100, 869 / 2 - 283 / 2 + 4};

    FormMap map;
    Panel panel;
    COLORREF pageColour_ = 0;
};

} // namespace

TEST_F(LeakTest, SliderSteps) {
    click("bt_y6");
    panel.click(map.sliderPoint("verticalSlider", 80)); // where the wheel is to turn
    const auto level = [] { return StoredSettings::read().system.micLevel; };
    expectNothingKept(5, 250, [&] {
        for (const auto &[notches, wanted] : {std::pair{-20, 20}, {20, 80}}) {
            turnWheel(notches); // three levels a notch
            ASSERT_TRUE(waitUntil([&, stored = wanted] { return level() == stored; })) << level();
        }
    });
}

TEST_F(LeakTest, PageSwitches) {
    const char *const buttons[] = {"bt_y2", "bt_y3", "bt_y4", "bt_y6", "bt_y8", "bt_y9", "bt_y11", "bt_y0"};
    expectNothingKept(3, 125, [&] {
        for (const char *button : buttons)
            click(button);
    });
}

TEST_F(LeakTest, Dialogs) {
    expectNothingKept(5, 100, [&] {
        for (const char *button : {"pushButton_2", "pushButton_3"}) {
            openDialog(button);
            panel.press(VK_ESCAPE);
            ASSERT_TRUE(waitUntil([&] { return !dialogIsOpen(); })) << button;
        }
    });
}

TEST_F(LeakTest, LanguageSwitches) {
    expectNothingKept(2, 100, [&] {
        for (const auto &[key, language] : {std::pair<WORD, DWORD>{VK_DOWN, 1}, {VK_UP, 0}}) {
            openDialog("pushButton_2");
            panel.press(VK_TAB); // to the list of languages
            panel.press(key);
            panel.press(VK_RETURN);
            const DWORD wanted = language;
            ASSERT_TRUE(
                waitUntil([&] { return Registry::ReadDwordValue(kProductKey, L"language") == wanted; }));
            ASSERT_TRUE(waitUntil([&] { return !dialogIsOpen(); }));
        }
    });
}
