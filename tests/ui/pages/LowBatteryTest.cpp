#include "ui/pages/BatteryReport.h"

#include <gtest/gtest.h>

namespace {

TEST(LowBatteryWatch, TellsOnceOfTwentyAndOfTenPercentUntilCharged) {
    constexpr int kNothing = 0;
    const struct {
        uint8_t connected, charging, step;
        int told;
    } replies[] = {
        {1, 0, 2, kNothing}, {1, 0, 1, 20},       {1, 0, 2, kNothing},   {1, 0, 1, kNothing},
        {0, 1, 0, kNothing}, // not there: says nothing of the charger
        {1, 0, 1, kNothing}, {1, 0, 0, 10},       {1, 0, 0, kNothing},   {1, 0, 1, kNothing},
        {1, 1, 0, kNothing}, {1, 2, 0, 10}, // falls past 20 % unseen: one notice
        {1, 0, 1, kNothing}, {1, 1, 9, kNothing}, {1, 0, 255, kNothing}, {1, 0, 1, 20},
    };
    LowBatteryWatch watch;
    for (const auto &reply : replies)
        EXPECT_EQ(watch.hear({0xEE, reply.connected, reply.charging, reply.step}).value_or(kNothing),
                  reply.told)
            << &reply - replies;
}

} // namespace
