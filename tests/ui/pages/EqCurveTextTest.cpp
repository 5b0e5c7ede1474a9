// Curves as other programs write them, against gains worked out from the analogue filters.
#include "ui/pages/EqCurveText.h"

#include <gmock/gmock.h>

#include <cstring>
#include <string>

namespace {

using EqCurveText::Gains;

TEST(EqCurveText, TakesWhatOtherProgramsWrite) {
    const struct {
        std::string text;
        Gains gains;
    } rows[] = {
        // Points on the bands, between them (a third of the way from 250 to 2000 in octaves) and beside them.
        {"GraphicEQ: 25 0; 40 1.5; 100 -3; 250 0; 2000 9; 8000 -40; 16000 40.4",
         {1, 0, -2, 0, 3, 6, 9, -16, -20, 20}},
        {"\xEF\xBB\xBFGraphicEQ:16000 -2.5;\t1000 +2.5 ;1000 2.4\r\nPreamp: -6.1 dB\r\n",
         {2, 2, 2, 2, 2, 2, 1, 0, -1, -3}},
        {"GraphicEQ: 500 3\nGraphicEQ: 20 1e1; 20000 10;", {13, 13, 13, 13, 13, 13, 13, 13, 13, 13}},
        // A headphone correction.
        {"Preamp: -5.7 dB\n"
         "Filter 1: ON LSC Fc 105 Hz Gain 5.8 dB Q 0.70\n"
         "Filter 2: ON PK Fc 210 Hz Gain -3.6 dB Q 0.54\n"
         "Filter 3: ON PK Fc 1250 Hz Gain 1.8 dB Q 1.40\n"
         "Filter 4: ON PK Fc 2700 Hz Gain -4.4 dB Q 2.20\n"
         "Filter 5: ON PK Fc 5600 Hz Gain 6.3 dB Q 3.10\n"
         "Filter 6: ON HSC Fc 10000 Hz Gain -3.2 dB Q 0.70\n",
         {5, 4, 0, -3, -2, 1, -1, 0, 0, -3}},
        // A room measurement.
        {"Filter Settings file\r\n\r\nDated: 1 Jun 2024 10:15:00\r\n# Filter 9: ON what\r\nEqualiser: "
         "Generic\r\n"
         "Filter  1: ON  PK       Fc   1000.0 Hz  Gain -12.00 dB  Q  4.318\r\n"
         "Filter  2: ON  PK       Fc    63.00 Hz  Gain  15.00 dB  Q  1.500\r\n"
         "Filter  3: OFF PK       Fc   100.0 Hz   Gain   9.0 dB   Q  1.000\r\nFilter  4: ON  None\r\n",
         {3, 15, 3, 1, 0, -12, 0, 0, 0, 0}},
        {"Channel: all\nFilter: ON LS Fc 200 Hz Gain 8.0 dB\n", {8, 8, 7, 2, 0, 0, 0, 0, 0, 0}},
        {"Filter: ON HS Fc 3000 Hz Gain -9 dB", {0, 0, 0, 0, 0, 0, -2, -7, -9, -9}},
    };
    for (const auto &row : rows)
        EXPECT_EQ(EqCurveText::parse(row.text).gains, row.gains) << row.text;
}

// Nothing is guessed: the line that is wrong is named, 0 where there is no curve at all.
TEST(EqCurveText, RefusesTheWholeTextForOneBadLine) {
    const std::string good = "Filter 1: ON PK Fc 105 Hz Gain -2.1 dB Q 0.70\n";
    const struct {
        std::string text;
        int badLine;
    } rows[] = {
        {"", 0},
        {"Preamp: -6 dB\nFilter 1: OFF PK Fc 1 Hz\n", 0},
        {"MZ\x90\x03:\xFF\xFE", 0},
        {std::string("\xFF\xFEG\0r\0a\0p\0h\0i\0c\0E\0Q\0:\0", 20), 0},
        {good + std::string(1, '\0'), 0},
        {"GraphicEQ:\n", 1},
        {"\nGraphicEQ: ; ;", 2},
        {"GraphicEQ: 25 0; 40", 1},
        {"GraphicEQ: 25 0; x 1", 1},
        {"GraphicEQ: 25 1,5", 1},
        {"GraphicEQ: 25 1.5 2", 1},
        {"GraphicEQ: 0 1", 1},
        {"GraphicEQ: nan 1", 1},
        {"GraphicEQ: 25 inf", 1},
        {"GraphicEQ: 25 +-1", 1},
        {"GraphicEQ: 25 1e999", 1},
        {good + good + "Filter 3: ON PK Fc -5 Hz Gain 1 dB Q 1", 3},
        {good + "Filter 2: ON PK Fc 24000 Hz Gain 1 dB Q 1", 2},
        {good + "Filter 2: ON PK Fc 50 Hz Gain 1 dB Q 0", 2},
        {good + "Filter 2: ON PK Fc 50 Hz Gain 1 dB Q 1e9", 2},
        {good + "Filter 2: ON PK Fc 50 Hz Gain 1 dB Q", 2},
        {good + "Filter 2: ON PK Fc 50 Hz Gain 1 dB", 2},
        {good + "Filter 2: ON PK Fc 50 Hz Gain 1 dB Q 1 Q 1", 2},
        {good + "Filter 2: ON PK Fc 50 Hz Gain 1e9 dB Q 1", 2},
        {good + "Filter 2: ON LPQ Fc 50 Hz Q 1", 2},
        {good + "Filter 2: ON", 2},
        {"Channel: L\n" + good, 1},
    };
    for (const auto &row : rows) {
        const EqCurveText::Parsed parsed = EqCurveText::parse(row.text);
        EXPECT_FALSE(parsed.gains) << row.text;
        EXPECT_EQ(parsed.badLine, row.badLine) << row.text;
    }
}

TEST(EqCurveText, WritesTheBandsInOneLineThatItReads) {
    const Gains gains{-20, 20, 0, 1, -1, 9, 10, -10, 3, -4};
    ExtBlock block{};
    std::memcpy(block.gain, gains.data(), gains.size());
    const std::string text = EqCurveText::graphicEq(block);
    EXPECT_EQ(
        text,
        "GraphicEQ: 30 -20; 60 20; 120 0; 250 1; 500 -1; 1000 9; 2000 10; 4000 -10; 8000 3; 16000 -4\n");
    EXPECT_EQ(EqCurveText::parse(text).gains, gains);
}

} // namespace
