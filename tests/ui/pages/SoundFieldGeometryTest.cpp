#include "ui/pages/SoundFieldGeometry.h"

#include <gtest/gtest.h>

using namespace SoundField;

// Hand-computed: centre (175, 175), marker 30 x 31.
TEST(SoundFieldGeometry, MarkersStandOnTheRayOfTheirReferencePoint) {
    const struct {
        Point reference;
        int value;
        Point expected;
    } rows[] = {
        {{175, 75}, -13, {160, 10}},   // fy = 150: 175 - 150 - 15
        {{175, 75}, 4, {160, 160}},    // on the centre
        {{175, 75}, 0, {160, 125}},    // t = 13/17: round(114.7) = 115
        {{278, 174}, -13, {314, 158}}, // fx = round(-154.5) = -154, fy = round(1.5) = 2
        {{72, 176}, -5, {78, 161}},    // fx = round(154.5) = 155, fy = -1, t = 8/17: 73, round(-0.47) = 0
    };
    for (const auto &row : rows) {
        const Point p = markerPosition({175, 175}, row.reference, {30, 31}, row.value, kMinLevel, kMaxLevel);
        EXPECT_EQ(p.x, row.expected.x) << "reference " << row.reference.x << ", value " << row.value;
        EXPECT_EQ(p.y, row.expected.y) << "reference " << row.reference.x << ", value " << row.value;
    }
}

TEST(SoundFieldGeometry, SpeakersTurnCounterClockwiseAndRingsClockwise) {
    EXPECT_NEAR(onCircle(-30, 110).x, 95.263, 1e-3);
    EXPECT_NEAR(onCircle(-30, 110).y, 55, 1e-3);

    EXPECT_TRUE(pointRing({1, 2}, {5, 5}, 0).empty());
    const std::vector<PointF> ring = pointRing({1, 2}, {4, 6}, 4); // radius 5
    ASSERT_EQ(ring.size(), 4U);
    EXPECT_NEAR(ring[1].x, 1, 1e-9);
    EXPECT_NEAR(ring[1].y, 7, 1e-9);
    EXPECT_NEAR(pointRing({0, 0}, {0, 2}, 7)[1].x, 2 * 0.6234898018587336, 1e-12); // 360/7 degrees, not 51
}
