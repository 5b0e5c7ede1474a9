#include "ui/pages/VolumeBalance.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <random>

using VolumeBalance::Levels;

TEST(VolumeBalance, LouderChannelEqualsTheMasterAfterAnyMoves) {
    std::mt19937 random(20240611);
    const auto level = [&random] { return static_cast<int8_t>(random() % 101); };
    Levels levels{0, 0, 0};
    for (int move = 0; move < 100000; ++move) {
        const Levels before = levels;
        const int8_t moved = level();
        const bool locked = random() % 8 == 0;
        switch (random() % 3) {
        case 0:
            levels = VolumeBalance::followMaster({moved, before.left, before.right}, before.master);
            ASSERT_EQ(std::min(levels.left, levels.right),
                      std::max(0, moved - std::abs(before.left - before.right)))
                << "the distance is kept until a limit";
            break;
        case 1:
            levels =
                VolumeBalance::followChannel({before.master, moved, before.right}, &Levels::left, locked);
            break;
        default:
            levels =
                VolumeBalance::followChannel({before.master, before.left, moved}, &Levels::right, locked);
        }
        ASSERT_EQ(levels.master, std::max(levels.left, levels.right)) << "move " << move;
        ASSERT_TRUE(levels.master <= 100 && std::min(levels.left, levels.right) >= 0) << "move " << move;
    }
}

// Devices may hold a master that never matched its channels, and count in 8 bits.
TEST(VolumeBalance, OddLevelsStayInsideTheScale) {
    const struct {
        Levels before; // its master is the new one
        int8_t previousMaster;
        std::array<int, 3> after;
    } cases[] = {
        {{20, 90, 80}, 10, {20, 20, 90}},
        {{100, 10, 5}, -128, {100, 100, 0}}, // 228 is -28 in 8 bits
        {{127, 127, 90}, 0, {127, 127, 100}},
    };
    for (const auto &c : cases) {
        const Levels after = VolumeBalance::followMaster(c.before, c.previousMaster);
        EXPECT_EQ((std::array<int, 3>{after.master, after.left, after.right}), c.after);
    }
}

TEST(VolumeBalance, DeadBandCoversOneStepBelowSixty) {
    const struct {
        int system, master;
        bool news;
    } cases[] = {{45, 44, false}, {43, 44, false}, {46, 44, true}, {42, 44, true},
                 {59, 60, false}, {60, 60, true},  {60, 59, true}};
    for (const auto &c : cases)
        EXPECT_EQ(VolumeBalance::isNews(c.system, c.master), c.news)
            << c.system << " while master is " << c.master;
}

TEST(VolumeBalance, EndpointScalarIsCutToPercent) {
    for (const auto &[scalar, percent] :
         {std::pair(0.499f, 49), {0.7f, 69}, {1.0f, 100}, {-1.0f, 0}, {2.0f, 100}, {std::nanf(""), 0}})
        EXPECT_EQ(VolumeBalance::percentOfScalar(scalar), percent) << scalar;
}
