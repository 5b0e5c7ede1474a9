// What reports of Windows' volume are taken for. How channels follow is tested with the whole window.
#include "ui/pages/VolumeBalance.h"

#include <gtest/gtest.h>

#include <cmath>

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
