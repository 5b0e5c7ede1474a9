// What the FTP client reads out of replies, and what its progress shows.

#include "update/FtpReply.h"
#include "update/DownloadProgress.h"

#include <climits>
#include <gtest/gtest.h>

namespace {

TEST(FtpReply, PassivePortIsMadeOfTheLastTwoNumbers) {
    const std::pair<const char *, int32_t> rows[] = {
        {"227 Entering Passive Mode (127,0,0,1,195,80)\r\n", 195 * 256 + 80},
        {"227 (,,,,255, 255 )", 65535},
        {"227 =127,0,0,1,195,80", -1},
        {"227 )127,0,0,1,195,80(", -2},
        {"227 (1,2,3,4,0,-5)", -2},
        {"227 (1,2,3,4,2147483647,2147483647)", -2},
    };
    for (const auto &[text, port] : rows)
        EXPECT_EQ(parsePassivePort(text), port) << text;
}

TEST(Progress, IsShownByStageAndValue) {
    const auto &failed = UpdateTexts::kDownloadFailed, &done = UpdateTexts::kDownloaded,
               &running = UpdateTexts::kDownloading;
    const struct {
        uint32_t stage;
        int32_t value;
        const BilingualText &text;
        std::optional<int32_t> bar;
    } rows[] = {{10, -1, failed, {}},   {2, -42, failed, {}},   {2, 0, running, 0}, {2, 100, done, 100},
                {2, 101, running, 101}, {10, 100, running, {}}, {0, 0, running, {}}};
    for (const auto &row : rows) {
        const ProgressDisplay display = progressDisplay(row.stage, row.value);
        EXPECT_STREQ(display.text.english, row.text.english) << row.stage << " " << row.value;
        EXPECT_EQ(display.bar, row.bar) << row.stage << " " << row.value;
    }
}

TEST(Progress, IsThirtyTwoBitArithmeticThatWrapsAround) {
    const struct {
        uint64_t received, expected;
        int32_t percent;
    } rows[] = {
        {15, 10, 150},                                 // more than announced
        {21474836, 50000000, 42},                      // the last total whose product fits
        {21474837, 50000000, -42},                     // the product has wrapped to -2147483596
        {uint64_t{9} << 29, 0xFFFFFFFFull, INT32_MIN}, // -2^31 / -1
    };
    for (const auto &row : rows)
        EXPECT_EQ(progressPercent(row.received, row.expected), row.percent) << row.received;
}

} // namespace
