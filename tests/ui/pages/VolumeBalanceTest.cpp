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

namespace {

int8_t previous(const Levels &levels) {
    return std::max(levels.left, levels.right);
}

Levels withMaster(Levels levels, int master) {
    levels.master = static_cast<int8_t>(master);
    return levels;
}

bool inRange(int level) {
    return level >= 0 && level <= 100;
}

} // namespace

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
        {{0, 90, 89}, 90, {0, 0, 0}},
        {{70, 20, 20}, 20, {70, 70, 70}},
        {{55, 55, 20}, 55, {55, 55, 20}},    // no move
        {{50, 0, 40}, 40, {50, 10, 50}},     // a balance lost at the limit is not found again
        {{20, 90, 80}, 10, {20, 20, 90}},    // a device whose master never matched its channels
        {{100, 10, 5}, -128, {100, 100, 0}}, // 228 is -28 in the device's 8 bits
        {{-128, 127, -128}, 127, {-128, -128, 0}},
        {{127, -128, 127}, -1, {127, 0, 127}},
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
        {{40, 0, 0}, false, {0, 0, 0}, {0, 0, 0}},
        {{40, -5, 127}, false, {127, -5, 127}, {127, -5, 127}}, // compared as signed bytes
        {{40, -5, 127}, true, {-5, -5, 0}, {127, 100, 127}},
    };
    for (const Case &c : cases) {
        EXPECT_EQ(VolumeBalance::followLeft(c.before, c.locked), c.afterLeft)
            << testing::PrintToString(c.before);
        EXPECT_EQ(VolumeBalance::followRight(c.before, c.locked), c.afterRight)
            << testing::PrintToString(c.before);
    }
}

TEST(VolumeBalance, LouderChannelEqualsTheMasterAfterAnyMoves) {
    std::mt19937 random(20240611);
    const auto level = [&random] { return static_cast<int8_t>(random() % 101); };
    for (int start = 0; start < 2000; ++start) {
        Levels levels{0, level(), level()};
        levels.master = previous(levels);
        for (int move = 0; move < 50; ++move) {
            const Levels before = levels;
            const bool locked = random() % 2;
            switch (random() % 3) {
            case 0:
                levels = VolumeBalance::followMaster(withMaster(levels, level()), before.master);
                break;
            case 1:
                levels.left = level();
                levels = VolumeBalance::followLeft(levels, locked);
                break;
            default:
                levels.right = level();
                levels = VolumeBalance::followRight(levels, locked);
            }
            ASSERT_EQ(levels.master, std::max(levels.left, levels.right)) << testing::PrintToString(before);
            ASSERT_TRUE(inRange(levels.master) && inRange(levels.left) && inRange(levels.right))
                << testing::PrintToString(before) << " became " << testing::PrintToString(levels);
        }
    }
}

TEST(VolumeBalance, DistanceIsKeptUntilALimit) {
    for (int left = 0; left <= 100; ++left)
        for (int right = 0; right <= 100; ++right)
            for (int master = 0; master <= 100; master += 7) {
                const Levels before{static_cast<int8_t>(master), static_cast<int8_t>(left),
                                    static_cast<int8_t>(right)};
                const Levels after = VolumeBalance::followMaster(before, previous(before));
                const int expected = std::max(0, master - std::abs(left - right));
                ASSERT_EQ(std::min(after.left, after.right), expected) << testing::PrintToString(before);
                ASSERT_EQ(after.left < after.right, left < right && expected < master);
            }
}

TEST(VolumeBalance, AnyBytesOfADeviceGiveLevelsInRangeForTheNextMaster) {
    for (int left = -128; left <= 127; left += 5)
        for (int right = -128; right <= 127; right += 5)
            for (int last = -128; last <= 127; last += 17)
                for (const int master : {0, 1, 50, 100}) {
                    const Levels before{static_cast<int8_t>(master), static_cast<int8_t>(left),
                                        static_cast<int8_t>(right)};
                    const Levels after = VolumeBalance::followMaster(before, static_cast<int8_t>(last));
                    ASSERT_TRUE(inRange(after.left) && inRange(after.right))
                        << testing::PrintToString(before);
                    ASSERT_EQ(left > right ? after.left : after.right, master)
                        << testing::PrintToString(before);
                }
}

TEST(VolumeBalance, DeadBandCoversOneStepBelowSixty) {
    struct Case {
        int system, master;
        bool news;
    };
    const Case cases[] = {
        {45, 44, false}, {43, 44, false}, {44, 44, false}, {46, 44, true},   {42, 44, true}, {59, 60, false},
        {60, 60, true},  {60, 59, true},  {61, 60, true},  {99, 100, true},  {0, 1, false},  {1, 0, false},
        {0, 0, false},   {0, -128, true}, {0, -1, false},  {100, 127, true},
    };
    for (const Case &c : cases)
        EXPECT_EQ(VolumeBalance::isNews(c.system, c.master), c.news)
            << c.system << " while master is " << c.master;
}

TEST(VolumeBalance, EndpointScalarIsCutToPercent) {
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const float infinity = std::numeric_limits<float>::infinity();
    struct Case {
        float scalar;
        int percent;
    };
    const Case cases[] = {
        {0.499f, 49}, {1.0f, 100}, {0.0f, 0},         {0.75f, 75},    {0.009f, 0}, {0.7f, 69}, // 0.7f < 0.7
        {-1.0f, 0},   {2.0f, 100}, {infinity, 100},   {-infinity, 0}, {nan, 0},    {3e38f, 100},
        {-0.0f, 0},   {1e-40f, 0}, {1.0000001f, 100},
    };
    for (const Case &c : cases)
        EXPECT_EQ(VolumeBalance::percentOfScalar(c.scalar), c.percent) << c.scalar;
}
