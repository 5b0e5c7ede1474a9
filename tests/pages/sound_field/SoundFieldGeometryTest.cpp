#include "pages/sound_field/SoundFieldGeometry.h"

#include <cmath>
#include <gtest/gtest.h>

namespace {

TEST(SoundFieldGeometry, RingsPassThroughTheirPointFromTheRightClockwise) {
    const auto ring = SoundField::pointRing({10, 20}, {13, 24}, 4);
    const std::pair<double, double> places[] = {{15, 20}, {10, 25}, {5, 20}, {10, 15}};
    ASSERT_EQ(ring.size(), std::size(places));
    for (size_t i = 0; i < ring.size(); ++i)
        EXPECT_NEAR(std::hypot(ring[i].x - places[i].first, ring[i].y - places[i].second), 0, 1e-9) << i;
    EXPECT_TRUE(SoundField::pointRing({10, 20}, {13, 24}, 0).empty());
}

} // namespace
