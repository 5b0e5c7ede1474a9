#include "pages/equalizer/EqCurveLine.h"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <random>

namespace {

// Between two points a line of this kind turns only where a control point leaves their range.
TEST(EqCurveLine, GoesThroughItsPointsSmoothlyAndNeverTurnsBetweenThem) {
    std::mt19937 random(16);
    for (int round = 0; round < 500; ++round) {
        std::vector<double> heights(10);
        for (double &height : heights)
            height = std::uniform_int_distribution(-20, 20)(random);
        const auto segments = EqCurveLine::through(heights);
        ASSERT_EQ(segments.size(), 9U);
        double slope = segments[0].control1 - segments[0].start;
        for (size_t i = 0; i < segments.size(); ++i) {
            const EqCurveLine::Segment &s = segments[i];
            ASSERT_EQ(std::pair(s.start, s.end), std::pair(heights[i], heights[i + 1]));
            ASSERT_NEAR(s.control1 - s.start, slope, 1e-9) << "a corner";
            slope = s.end - s.control2;
            const auto [low, high] = std::minmax(s.start, s.end);
            for (const double control : {s.control1, s.control2})
                ASSERT_NEAR(control, std::clamp(control, low, high), 1e-9);
        }
    }
    EXPECT_LT(EqCurveLine::through({0, 3, 10})[0].control2, 2.5) << "flat at each point";
}

} // namespace
