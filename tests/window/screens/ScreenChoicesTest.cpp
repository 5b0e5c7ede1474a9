#include "window/screens/ScreenScale.h"
#include "window/screens/WindowFit.h"

#include <array>
#include <gtest/gtest.h>

namespace {

std::array<int, 8> numbers(const WindowFit &fit) {
    const auto [height, margin, inset, scrolls, line, microphone, other, upgrade] = fit;
    return {height, margin, inset, scrolls, line, microphone, other, upgrade};
}

TEST(ScreenChoices, ScaleIsTheScreensOwnUnlessTheWindowWouldNotFit) {
    const struct {
        ScreenNumbers screen;
        double scale;
    } cases[] = {
        {{1920, 1040, 96}, 1},    {{1920, 1020, 144}, 1.15}, {{1920, 1040, 72}, 1},
        {{3840, 2040, 288}, 2.3}, {{1366, 728, 96}, 1},      {{1280, 720, 288}, 1},
        {{2400, 1080, 192}, 1.2}, {{2142, 1738, 192}, 2},    {{2141, 1738, 192}, 1.95},
    };
    for (const auto &c : cases)
        EXPECT_NEAR(c.scale, chooseScale(c.screen), 1e-6) << &c - cases;
}

TEST(ScreenChoices, WavesAndGapsGiveWayThenMarginsThenItScrolls) {
    const struct {
        int available;
        WindowFit fit;
    } cases[] = {
        {1000, {869, 20, 0, false, 456, 480, 700, 66}}, {788, {788, 20, 0, false, 447, 469, 682, 62}},
        {768, {768, 13, 0, false, 439, 459, 666, 58}},  {751, {751, 8, 1, false, 431, 450, 653, 54}},
        {728, {728, 8, 12, false, 422, 439, 635, 49}},  {727, {727, 8, 12, true, 421, 438, 634, 49}},
        {500, {660, 8, 12, true, 396, 408, 586, 36}},
    };
    for (const auto &c : cases)
        EXPECT_EQ(numbers(c.fit), numbers(fitWindow(c.available))) << c.available;
}

} // namespace
