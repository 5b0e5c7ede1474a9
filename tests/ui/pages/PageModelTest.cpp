// The rules of the pages on plain numbers and texts.
#include "ui/pages/BatteryReport.h"
#include "ui/pages/EqCurveLine.h"
#include "ui/pages/EqCurveText.h"
#include "ui/pages/SoundFieldGeometry.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
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

// Against gains worked out from the analogue filters.
TEST(EqCurveText, TakesWhatOtherProgramsWriteOrRefusesTheWhole) {
    const std::string good = "Filter 1: ON PK Fc 105 Hz Gain -2.1 dB Q 0.70\n";
    const struct {
        std::string text;
        EqCurveText::Gains gains;
        int badLine = -1; // of what is refused
    } rows[] = {
        // Points on the bands, between them (a third of the way from 250 to 2000 in octaves) and beside them.
        {"GraphicEQ: 25 0; 40 1.5; 100 -3; 250 0; 2000 9; 8000 -40; 16000 40.4",
         {1, 0, -2, 0, 3, 6, 9, -16, -20, 20}},
        {"\xEF\xBB\xBFGraphicEQ:16000 -2.5;\t1000 +2.5 ;1000 2.4\r\nPreamp: -6.1 dB\r\n",
         {2, 2, 2, 2, 2, 2, 1, 0, -1, -3}},
        // A room measurement.
        {"Filter Settings file\r\n\r\n# Filter 9: ON what\r\nEqualiser: Generic\r\n"
         "Filter  1: ON  PK       Fc   1000.0 Hz  Gain -12.00 dB  Q  4.318\r\n"
         "Filter  2: ON  PK       Fc    63.00 Hz  Gain  15.00 dB  Q  1.500\r\n"
         "Filter  3: OFF PK       Fc   100.0 Hz   Gain   9.0 dB   Q  1.000\r\nFilter  4: ON  None\r\n",
         {3, 15, 3, 1, 0, -12, 0, 0, 0, 0}},
        {"Channel: all\nFilter: ON LS Fc 200 Hz Gain 8.0 dB\nFilter: ON HS Fc 3000 Hz Gain -9 dB",
         {8, 8, 7, 2, 0, 0, -2, -7, -9, -9}},
        // Nothing is guessed: the line that is wrong is named, 0 where there is no curve at all.
        {"Preamp: -6 dB\nFilter 1: OFF PK Fc 1 Hz\n", {}, 0},
        {std::string("\xFF\xFEG\0r\0a\0p\0h\0i\0c\0E\0Q\0:\0", 20), {}, 0},
        {"GraphicEQ: 25 0; 40", {}, 1},
        {"GraphicEQ: nan 1", {}, 1},
        {good + "Filter 2: ON PK Fc 24000 Hz Gain 1 dB Q 1", {}, 2},
        {good + "Filter 2: ON PK Fc 50 Hz Gain 1 dB Q 0", {}, 2},
        {good + "Filter 2: ON LPQ Fc 50 Hz Q 1", {}, 2},
        {"Channel: L\n" + good, {}, 1},
    };
    for (const auto &row : rows) {
        const EqCurveText::Parsed parsed = EqCurveText::parse(row.text);
        EXPECT_EQ(parsed.gains.value_or(EqCurveText::Gains{}), row.gains) << row.text;
        EXPECT_EQ(parsed.gains ? -1 : parsed.badLine, row.badLine) << row.text;
    }
}

TEST(EqCurveText, WritesTheBandsInOneLine) {
    const ExtBlock block{{-20, 20, 0, 1, -1, 9, 10, -10, 3, -4}, {}};
    EXPECT_EQ(
        EqCurveText::graphicEq(block),
        "GraphicEQ: 30 -20; 60 20; 120 0; 250 1; 500 -1; 1000 9; 2000 10; 4000 -10; 8000 3; 16000 -4\n");
}

TEST(SoundFieldGeometry, RingsPassThroughTheirPointFromTheRightClockwise) {
    const auto ring = SoundField::pointRing({10, 20}, {13, 24}, 4);
    const std::pair<double, double> places[] = {{15, 20}, {10, 25}, {5, 20}, {10, 15}};
    ASSERT_EQ(ring.size(), std::size(places));
    for (size_t i = 0; i < ring.size(); ++i)
        EXPECT_NEAR(std::hypot(ring[i].x - places[i].first, ring[i].y - places[i].second), 0, 1e-9) << i;
    EXPECT_TRUE(SoundField::pointRing({10, 20}, {13, 24}, 0).empty());
}

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
