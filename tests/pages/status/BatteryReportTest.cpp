#include "pages/status/BatteryReport.h"

#include <gtest/gtest.h>

namespace {

TEST(LowBatteryWatch, TellsOnceOfTwentyAndOfTenPercentUntilCharged) {
    const struct {
        uint8_t connected, charging, step;
        int told; // percent, 0 for nothing
    } replies[] = {
        {1, 0, 2, 0}, {1, 0, 1, 20},  {1, 0, 2, 0},
        {1, 0, 1, 0}, {0, 1, 0, 0}, // not there: says nothing of the charger
        {1, 0, 1, 0}, {1, 0, 0, 10},  {1, 0, 0, 0},
        {1, 0, 1, 0}, {1, 1, 0, 0},   {1, 2, 0, 10}, // falls past 20 % unseen: one notice
        {1, 1, 9, 0}, {1, 0, 255, 0}, {1, 0, 1, 20},
    };
    LowBatteryWatch watch;
    for (const auto &reply : replies) {
        const auto told = watch.hear({0xEE, reply.connected, reply.charging, reply.step});
        EXPECT_EQ(told.value_or(0), reply.told) << &reply - replies;
    }
}

} // namespace
