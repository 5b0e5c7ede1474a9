#include "ui/pages/LedReport.h"

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

} // namespace
