#include "ui/pages/VolumeBalance.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <random>
#include <utility>

using VolumeBalance::Levels;

namespace {

// Comparable and printed as numbers: master, left, right.
std::array<int, 3> numbers(const Levels &levels) {
    return {levels.master, levels.left, levels.right};
}

} // namespace

TEST(VolumeBalance, ChannelsFollowTheMaster) {
    const struct {
        Levels before; // its master is the new one
        int8_t previousMaster;
        std::array<int, 3> after;
    } cases[] = {
        {{100, 30, 80}, 80, {100, 50, 100}}, // the quieter channel keeps its distance
        {{10, 50, 100}, 100, {10, 0, 10}},   // and stops at 0
        {{20, 90, 80}, 10, {20, 20, 90}},    // a device whose master never matched its channels
        {{100, 10, 5}, -128, {100, 100, 0}}, // 228 is -28 in the device's 8 bits
        {{127, 127, 90}, 0, {127, 127, 100}},
    };
    for (const auto &c : cases)
        EXPECT_EQ(numbers(VolumeBalance::followMaster(c.before, c.previousMaster)), c.after);
}

TEST(VolumeBalance, LouderChannelEqualsTheMasterAfterAnyMoves) {
    std::mt19937 random(20240611);
    const auto level = [&random] { return static_cast<int8_t>(random() % 101); };
    for (int start = 0; start < 2000; ++start) {
        Levels levels{0, level(), level()};
        levels.master = std::max(levels.left, levels.right);
        for (int move = 0; move < 50; ++move) {
            const Levels before = levels;
            SCOPED_TRACE(testing::PrintToString(numbers(before)));
            const bool locked = random() % 2;
            const int8_t moved = level();
            switch (random() % 3) {
            case 0:
                levels = VolumeBalance::followMaster({moved, before.left, before.right}, before.master);
                ASSERT_EQ(std::min(levels.left, levels.right),
                          std::max(0, moved - std::abs(before.left - before.right)))
                    << "the distance is kept until a limit";
                break;
            case 1:
                levels = VolumeBalance::followLeft({before.master, moved, before.right}, locked);
                break;
            default:
                levels = VolumeBalance::followRight({before.master, before.left, moved}, locked);
            }
            ASSERT_EQ(levels.master, std::max(levels.left, levels.right));
            ASSERT_TRUE(levels.master <= 100 && std::min(levels.left, levels.right) >= 0);
        }
    }
}

TEST(VolumeBalance, DeadBandCoversOneStepBelowSixty) {
    const struct {
        int system, master;
        bool news;
    } cases[] = {{45, 44, false}, {43, 44, false}, {44, 44, false}, {46, 44, true}, {42, 44, true},
                 {59, 60, false}, {60, 60, true},  {60, 59, true},  {0, -128, true}};
    for (const auto &c : cases)
        EXPECT_EQ(VolumeBalance::isNews(c.system, c.master), c.news)
            << c.system << " while master is " << c.master;
}

TEST(VolumeBalance, EndpointScalarIsCutToPercent) {
    const std::pair<float, int> cases[] = {{0.499f, 49}, {0.7f, 69},  {1.0f, 100},
                                           {-1.0f, 0},   {2.0f, 100}, {std::nanf(""), 0}};
    for (const auto &[scalar, percent] : cases)
        EXPECT_EQ(VolumeBalance::percentOfScalar(scalar), percent) << scalar;
}
