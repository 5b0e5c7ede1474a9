#include "ui/pages/VolumeBalance.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>

using VolumeBalance::Levels;

namespace VolumeBalance {

bool operator==(const Levels &a, const Levels &b) {
    return a.master == b.master && a.left == b.left && a.right == b.right;
}

void PrintTo(const Levels &levels, std::ostream *out) {
    *out << "master " << int{levels.master} << " left " << int{levels.left} << " right " << int{levels.right};
}

} // namespace VolumeBalance

TEST(VolumeBalance, ChannelsFollowTheMaster) {
    struct Case {
        Levels before; // its master is the new one
        int8_t previousMaster;
        Levels after;
    };
    const Case cases[] = {
        {{100, 30, 80}, 80, {100, 50, 100}}, // the quieter channel keeps its distance
        {{10, 50, 100}, 100, {10, 0, 10}},   // and stops at 0
        {{100, 90, 40}, 90, {100, 100, 50}}, // mirror image
        {{70, 20, 20}, 20, {70, 70, 70}},
        {{50, 0, 40}, 40, {50, 10, 50}},     // a balance lost at the limit is not found again
        {{20, 90, 80}, 10, {20, 20, 90}},    // a device whose master never matched its channels
        {{100, 10, 5}, -128, {100, 100, 0}}, // 228 is -28 in the device's 8 bits
    };
    for (const Case &c : cases)
        EXPECT_EQ(VolumeBalance::followMaster(c.before, c.previousMaster), c.after)
            << "before: " << testing::PrintToString(c.before) << ", previous master "
            << int{c.previousMaster};
}

TEST(VolumeBalance, MasterAndOtherChannelFollowOneChannel) {
    struct Case {
        Levels before;
        bool locked;
        Levels afterLeft;
        Levels afterRight;
    };
    const Case cases[] = {
        {{40, 70, 30}, true, {70, 70, 70}, {30, 30, 30}},
        {{40, 70, 30}, false, {70, 70, 30}, {70, 70, 30}},
        {{40, -5, 127}, false, {127, -5, 127}, {127, -5, 127}}, // compared as signed bytes
    };
    for (const Case &c : cases) {
        EXPECT_EQ(VolumeBalance::followLeft(c.before, c.locked), c.afterLeft);
        EXPECT_EQ(VolumeBalance::followRight(c.before, c.locked), c.afterRight);
    }
}

TEST(VolumeBalance, LouderChannelEqualsTheMasterAfterAnyMoves) {
    std::mt19937 random(20240611);
    const auto level = [&random] { return static_cast<int8_t>(random() % 101); };
    for (int start = 0; start < 2000; ++start) {
        Levels levels{0, level(), level()};
        levels.master = std::max(levels.left, levels.right);
        for (int move = 0; move < 50; ++move) {
            const Levels before = levels;
            const bool locked = random() % 2;
            const int8_t moved = level();
            switch (random() % 3) {
            case 0:
                levels = VolumeBalance::followMaster({moved, before.left, before.right}, before.master);
                ASSERT_EQ(std::min(levels.left, levels.right),
                          std::max(0, moved - std::abs(before.left - before.right)))
                    << testing::PrintToString(before) << ": the distance is kept until a limit";
                break;
            case 1:
                levels = VolumeBalance::followLeft({before.master, moved, before.right}, locked);
                break;
            default:
                levels = VolumeBalance::followRight({before.master, before.left, moved}, locked);
            }
            ASSERT_EQ(levels.master, std::max(levels.left, levels.right)) << testing::PrintToString(before);
            ASSERT_TRUE(levels.master <= 100 && std::min(levels.left, levels.right) >= 0)
                << testing::PrintToString(before) << " became " << testing::PrintToString(levels);
        }
    }
}

TEST(VolumeBalance, DeadBandCoversOneStepBelowSixty) {
    struct Case {
        int system, master;
        bool news;
    };
    const Case cases[] = {
        {45, 44, false}, {43, 44, false}, {44, 44, false}, {46, 44, true}, {42, 44, true},
        {59, 60, false}, {60, 60, true},  {60, 59, true},  {0, 1, false},  {0, -128, true},
    };
    for (const Case &c : cases)
        EXPECT_EQ(VolumeBalance::isNews(c.system, c.master), c.news)
            << c.system << " while master is " << c.master;
}

TEST(VolumeBalance, EndpointScalarIsCutToPercent) {
    struct Case {
        float scalar;
        int percent;
    };
    const Case cases[] = {
        {0.499f, 49}, {1.0f, 100}, {0.0f, 0},
        {0.7f, 69}, // 0.7f < 0.7
        {-1.0f, 0},   {2.0f, 100}, {std::numeric_limits<float>::quiet_NaN(), 0},
    };
    for (const Case &c : cases)
        EXPECT_EQ(VolumeBalance::percentOfScalar(c.scalar), c.percent) << c.scalar;
}
