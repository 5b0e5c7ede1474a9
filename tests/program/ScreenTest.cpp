// The panel on the screen that the test runs on: its place, and that each page and the close button can be
// reached.
#include "program/FormMap.h"
#include "program/Panel.h"
#include "window/screens/ScreenScale.h"
#include "window/screens/WindowFit.h"

#include <cmath>
#include <gtest/gtest.h>

namespace {

constexpr int kMuteAboveEnd = 69; // the strip's mute button, once all is scrolled
const WindowFit kForm = fitWindow(WindowFit::kFullHeight);

class ScreenTest : public testing::Test {
protected:
    void SetUp() override {
        Panel::prepare();
        ASSERT_TRUE(panel.startAndShow());
        GetWindowRect(panel.window(), &frame);
        MONITORINFO info{};
        info.cbSize = sizeof info;
        GetMonitorInfoW(MonitorFromWindow(panel.window(), MONITOR_DEFAULTTOPRIMARY), &info);
        work = info.rcWork;
        const HDC screen = GetDC(nullptr);
        scale =
            chooseScale({work.right - work.left, work.bottom - work.top, GetDeviceCaps(screen, LOGPIXELSX)});
        ReleaseDC(nullptr, screen);
        fit = fitWindow(static_cast<int>((work.bottom - work.top) / scale));
    }

    POINT scaled(POINT place) const { return {std::lround(place.x * scale), std::lround(place.y * scale)}; }

    // In the window on this screen.
    POINT navigationButton(const std::string &name) {
        POINT place = map.centreOf(name.c_str());
        if (place.y > kForm.otherTop)
            place.y += fit.otherTop + fit.upgradeTop - kForm.otherTop - kForm.upgradeTop;
        else if (place.y > kForm.microphoneTop)
            place.y += fit.microphoneTop - kForm.microphoneTop;
        return scaled(place);
    }

    std::vector<COLORREF> page() const {
        const POINT from = scaled({250, 100});
        const POINT to = scaled({1000, 560});
        return coloursOf({frame.left + from.x, frame.top + from.y, frame.left + to.x, frame.top + to.y});
    }

    FormMap map;
    Panel panel;
    RECT frame{}, work{};
    double scale = 1;
    WindowFit fit{};
};

TEST_F(ScreenTest, WindowFitsAndEveryPageAndTheCloseButtonCanBeReached) {
    EXPECT_EQ(std::lround(WindowFit::kFullWidth * scale), frame.right - frame.left);
    EXPECT_EQ(std::lround(fit.height * scale), frame.bottom - frame.top);
    EXPECT_TRUE(frame.left >= work.left && frame.top >= work.top && frame.right <= work.right &&
                frame.bottom <= work.bottom)
        << frame.left << ',' << frame.top << " to " << frame.right << ',' << frame.bottom;

    for (const char *button : {"bt_y2", "bt_y3", "bt_y4", "bt_y6", "bt_y8", "bt_y9", "bt_y11", "bt_y0"}) {
        const std::vector<COLORREF> before = page();
        EXPECT_TRUE(panel.click({navigationButton(button)}, [&] { return page() != before; })) << button;
    }
    if (fit.scrolls) { // to the status strip's end, by a click below the handle of the scroll bar
        const POINT mute{map.centreOf("pushButton_13").x, fit.height - kMuteAboveEnd};
        EXPECT_TRUE(panel.click({scaled({1055, fit.height - 2}), scaled(mute)},
                                [&] { return !panel.journal("_SetMasterMute(1").empty(); }));
    }
    EXPECT_TRUE(
        panel.click({scaled(map.centreOf("pushButton"))}, [&] { return !IsWindowVisible(panel.window()); }));
}

} // namespace
