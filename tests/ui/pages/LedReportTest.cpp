#include "ui/pages/LedReport.h"
#include "ui/pages/PalettePoint.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace {

struct ReportCase {
    LedSettings settings;
    std::array<uint8_t, 6> head;
    const char *text;
};

TEST(LedReport, CarriesModeLevelAndColours) {
    const ReportCase cases[] = {
        {{1, 50, 255, 0, 128}, {0x0A, 1, 50, 255, 0, 128}, "1,50,255,0,128"},
        {{0, 0, 0, 0, 0}, {0x0A, 0, 0, 0, 0, 0}, "0,0,0,0,0"},
        {{4, 100, 256, 255, 300}, {0x0A, 4, 100, 255, 255, 255}, "4,100,255,255,255"},
        // No lower bound: negative values travel as their low byte.
        {{2, 7, -1, -5, -256}, {0x0A, 2, 7, 0xFF, 0xFB, 0x00}, "2,7,-1,-5,-256"},
    };
    for (const ReportCase &c : cases) {
        SCOPED_TRACE(c.text);
        const auto report = makeLedReport(c.settings);
        EXPECT_TRUE(std::equal(c.head.begin(), c.head.end(), report.begin()));
        EXPECT_TRUE(std::all_of(report.begin() + 6, report.end(), [](uint8_t byte) { return byte == 0; }));
        EXPECT_EQ(describeLedReport(c.settings), c.text);
    }
}

struct PointCase {
    PalettePoint click;
    PaletteSize widget, image;
    int x, y; // -1: no pixel
};

TEST(PalettePoint, MapsClicksToImagePixels) {
    constexpr PaletteSize palette{256, 256};
    const PointCase cases[] = {
        {{0, 0}, palette, palette, 0, 0},
        {{255, 255}, palette, palette, 255, 255},
        {{256, 10}, palette, palette, -1, -1},
        {{10, -1}, palette, palette, -1, -1},
        {{255, 128}, palette, {512, 512}, 510, 256}, // an image drawn for twice the density
        {{383, 383}, {384, 384}, palette, 255, 255},
        {{0, 0}, palette, {0, 0}, -1, -1}, // the image could not be read
    };
    for (const PointCase &c : cases) {
        SCOPED_TRACE(testing::Message() << c.click.x << "," << c.click.y << " of " << c.widget.width);
        const auto pixel = toPalettePixel(c.click, c.widget, c.image);
        EXPECT_EQ(pixel ? pixel->x : -1, c.x);
        EXPECT_EQ(pixel ? pixel->y : -1, c.y);
    }
}

} // namespace
