#include "pages/equalizer/EqCurveText.h"

#include <gtest/gtest.h>

namespace {

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

} // namespace
