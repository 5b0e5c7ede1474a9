// Where things stand: the equalizer's line, the sound field's markers and its ring of points.
#include "ui/pages/EqCurveLine.h"
#include "ui/pages/SoundFieldGeometry.h"

#include <gmock/gmock.h>

#include <random>

namespace {

double heightAt(const EqCurveLine::Segment &s, double t) {
    const double u = 1 - t;
    return u * u * u * s.start + 3 * u * u * t * s.control1 + 3 * u * t * t * s.control2 + t * t * t * s.end;
}

TEST(EqCurveLine, GoesThroughItsPointsSmoothlyAndNeverTurnsBetweenThem) {
    std::mt19937 random(16);
    for (int round = 0; round < 500; ++round) {
        std::vector<double> heights(10);
        for (double &height : heights)
            height = std::uniform_int_distribution(-20, 20)(random);
        const auto segments = EqCurveLine::through(heights);
        ASSERT_EQ(segments.size(), 9U);
        for (size_t i = 0; i < segments.size(); ++i) {
            const EqCurveLine::Segment &s = segments[i];
            ASSERT_EQ(s.start, heights[i]);
            ASSERT_EQ(s.end, heights[i + 1]);
            if (i > 0) { // no corner
                ASSERT_NEAR(s.control1 - s.start, segments[i - 1].end - segments[i - 1].control2, 1e-9);
            }
            const double direction = s.end > s.start ? 1 : -1;
            for (double t = 0; t < 1; t += 1 / 32.0)
                ASSERT_GE(direction * (heightAt(s, t + 1 / 32.0) - heightAt(s, t)), -1e-9);
        }
    }
    EXPECT_GT(heightAt(EqCurveLine::through({0, 3, 10})[0], 0.9), 2.5); // not merely flat at each point
    EXPECT_TRUE(EqCurveLine::through({1}).empty());
}

TEST(SoundFieldGeometry, PlacesMarkersOnTheRayOfTheirReference) {
    const struct {
        SoundField::Point reference;
        int value, x, y;
    } rows[] = {
        {{175, 71}, -13, 160, 4}, // lowest: 1.5 times as far out as the reference
        {{175, 71}, 4, 160, 160}, // highest: on the centre
        {{175, 71}, -4, 160, 87}, {{84, 228}, -13, 23, 239}, {{278, 174}, -5, 242, 159},
    };
    for (const auto &row : rows) {
        const SoundField::Point place =
            SoundField::markerPosition({175, 175}, row.reference, {30, 31}, row.value, -13, 4);
        EXPECT_EQ(std::pair(place.x, place.y), std::pair(row.x, row.y))
            << row.reference.x << " " << row.value;
    }
}

TEST(SoundFieldGeometry, SpreadsPointsEvenlyOnACircle) {
    const auto ring = SoundField::pointRing({10, 20}, {13, 24}, 4);
    ASSERT_EQ(ring.size(), 4U);
    const double expected[][2] = {{15, 20}, {10, 25}, {5, 20}, {10, 15}};
    for (size_t i = 0; i < 4; ++i) {
        EXPECT_NEAR(ring[i].x, expected[i][0], 1e-9);
        EXPECT_NEAR(ring[i].y, expected[i][1], 1e-9);
    }
    EXPECT_TRUE(SoundField::pointRing({0, 0}, {1, 0}, 0).empty());
    EXPECT_TRUE(SoundField::pointRing({0, 0}, {1, 0}, -3).empty());
}

} // namespace
