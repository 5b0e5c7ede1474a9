// What the FTP client reads out of replies, and the percentage that it reports.
#include "update/ftp/FtpReply.h"

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

TEST(FtpProgress, IsThirtyTwoBitArithmeticThatWrapsAround) {
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
