#include "update/FtpReply.h"

#include "update/DownloadProgress.h"

#include <climits>
#include <gtest/gtest.h>

namespace {

TEST(FtpReply, CodeIsTheNumberInTheFirstThreeCharacters) {
    const struct {
        std::string text;
        std::optional<int32_t> code;
    } rows[] = {{"220 ready\r\n", 220},
                {"230-first\r\n230 last\r\n", 230},
                {"2201", 220},
                {"22", 22},
                {"2x0 odd", 2},
                {" 21 x", 21},
                {"-22", -22},
                {"+-1", {}},
                {"", {}},
                {"abc", {}},
                {{'\0', '2', '2'}, {}}};
    for (const auto &row : rows)
        EXPECT_EQ(parseReplyCode(row.text), row.code) << row.text;
}

TEST(FtpReply, PassivePortIsMadeOfTheLastTwoNumbers) {
    const struct {
        const char *text;
        int32_t port;
    } rows[] = {
        {"227 Entering Passive Mode (127,0,0,1,195,80)\r\n", 195 * 256 + 80},
        {"227 (,,,,1,2)", 258}, // host numbers are not looked at
        {"227 (1,2,3,4, 4 , 1 )", 1025},
        {"227 (1,2,3,4,255,255)", 65535},
        {"227 =127,0,0,1,195,80", -1},
        {"227 )127,0,0,1,195,80(", -2},
        {"227 (127,0,0,1,195)", -2},
        {"227 (1,2,3,4,x,y)", -2},
        {"227 (1,2,3,4,256,0)", -2},
        {"227 (1,2,3,4,0,-5)", -2},
        {"227 (1,2,3,4,99999999999999999999,1)", -2},
        {"227 (1,2,3,4,2147483647,2147483647)", -2},
    };
    for (const auto &row : rows)
        EXPECT_EQ(parsePassivePort(row.text), row.port) << row.text;
}

TEST(FtpReply, SizeAndTimeStandAfterTheCode) {
    const struct {
        const char *text;
        std::optional<int64_t> size;
    } rows[] = {{"213 0\r\n", 0}, {"213 2147483647", INT32_MAX},   {"213 2147483648", {}},
                {"213 -1", {}},   {"213 9223372036854775808", {}}, {"213 many", {}},
                {"213", {}}};
    for (const auto &row : rows)
        EXPECT_EQ(parseFileSize(row.text), row.size) << row.text;
    EXPECT_EQ(parseFileTime("213 20240501134500\r\n"), "2024-05-01 13:45:00");
    for (const char *text : {"213 2024050113450", "213 2024-05-01 13:45:00", "213"})
        EXPECT_EQ(parseFileTime(text), "") << text;
}

TEST(FtpReply, EndsWithItsLastLine) {
    const std::pair<const char *, bool> rows[] = {{"150 coming\r\n", true},
                                                  {"150 coming", false},
                                                  {"150-a\r\n150 b\r\n", true},
                                                  {"150-a\r\n 150 b\r\n", false},
                                                  {"150-a\r\n", false},
                                                  {"1\n", true},
                                                  {"", false}};
    for (const auto &[text, isWhole] : rows)
        EXPECT_EQ(isWholeReply(text), isWhole) << text;
}

TEST(Progress, IsShownByStageAndValue) {
    const std::wstring failed = L"Download Failed 下载失败", done = L"Download Success 下载成功",
                       running = L"Downloading,please DON'T leaves this page... 下载中，请勿离开本页面...";
    const struct {
        uint32_t stage;
        int32_t value;
        std::wstring texts;
        std::optional<int32_t> bar;
    } rows[] = {{1, -1, failed, {}},    {2, -1, failed, {}},    {2, -42, failed, {}},
                {2, 0, running, 0},     {2, 99, running, 99},   {2, 100, done, 100},
                {2, 101, running, 101}, {10, 100, running, {}}, {0, 0, running, {}}};
    for (const auto &row : rows) {
        const ProgressDisplay display = progressDisplay(row.stage, row.value);
        EXPECT_EQ(std::wstring(display.text.english) + L" " + display.text.chinese, row.texts)
            << row.stage << " " << row.value;
        EXPECT_EQ(display.bar, row.bar) << row.stage << " " << row.value;
    }
}

TEST(Progress, IsThirtyTwoBitArithmeticThatWrapsAround) {
    const struct {
        uint64_t received, expected;
        int32_t percent;
    } rows[] = {
        {1, 3, 33},
        {15, 10, 150},             // more than announced
        {21474836, 50000000, 42},  // the last total whose product fits
        {21474837, 50000000, -42}, // the product has wrapped to -2147483596
        {52428800, 52428800, 18},  // 5242880000 - 2^32 = 947912704
        {5, 0, 0},
        {uint64_t{9} << 29, 0xFFFFFFFFull, INT32_MIN}, // -2^31 / -1
    };
    for (const auto &row : rows)
        EXPECT_EQ(progressPercent(row.received, row.expected), row.percent)
            << row.received << "/" << row.expected;
}

} // namespace
