// The FTP client against a server that does what a test says.

#include "update/ftp/FtpControl.h"
#include "update/ftp/FtpDownload.h"
#include "update/ftp/ScriptedFtpServer.h"

#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace std::chrono_literals;
using namespace testing;

namespace {

using Reports = std::vector<std::pair<uint32_t, int32_t>>;
using Lines = std::vector<std::string>;

constexpr TimeLimits kPatient{20s, std::nullopt, 20s};
constexpr TimeLimits kHasty{500ms, std::nullopt, 100ms};

void keepReport(uint32_t stage, int32_t value, uintptr_t context) {
    reinterpret_cast<Reports *>(context)->emplace_back(stage, value);
}

// One downloadToMemory with what can be seen of it.
struct Download {
    FtpResult result;
    std::vector<uint8_t> buffer;
    std::string_view bytes;
    Reports reports;
};

Download download(uint32_t port, const TimeLimits &limits = kPatient) {
    Download seen;
    seen.result =
        downloadToMemory({"127.0.0.1", port, "maker", "secret word"}, "dir\\file", seen.buffer, nullptr,
                         {&keepReport, reinterpret_cast<uintptr_t>(&seen.reports)}, limits);
    seen.bytes = {reinterpret_cast<const char *>(seen.buffer.data()), seen.buffer.size()};
    return seen;
}

FtpScript scriptWith(const std::string &step, const Lines &reply) {
    FtpScript script;
    script.files["dir\\file"] = "0123456789";
    script.replies[step] = reply;
    return script;
}

TEST(DownloadToMemory, FetchesTheFileInAFixedOrderAndReportsEveryChunk) {
    // These replies count by their class.
    FtpScript script = scriptWith("GREETING", {"211 hello\r\n"});
    script.replies["PASS"] = {"230-hello\r\n230 welcome\r\n"};
    script.replies["RETR"] = {"125 now\r\n"};
    script.replies["FINAL"] = {"250 all sent\r\n"};
    const std::string file(200000, 'x');
    script.files["dir\\file"] = file;
    ScriptedFtpServer server(script);
    const Download seen = download(server.port());
    EXPECT_EQ(seen.result, FtpResult::Done);
    EXPECT_TRUE(seen.bytes == file);
    EXPECT_GE(seen.reports.size(), 5u); // 64 KiB at most each, and the end
    EXPECT_TRUE(std::is_sorted(seen.reports.begin(), seen.reports.end()));
    EXPECT_EQ(seen.reports[seen.reports.size() - 2], std::pair(2u, 100));
    EXPECT_TRUE(server.awaitLine("closed"));
    EXPECT_THAT(server.lines(), ElementsAre("USER maker", "PASS secret word", "SIZE dir\\file", "TYPE I",
                                            "PASV", "RETR dir\\file", "QUIT", "closed"));
}

TEST(DownloadToMemory, NamesTheStepThatFailedSaysGoodByeAndCloses) {
    using Result = FtpResult;
    const struct {
        const char *step;
        Lines reply;
        Result result;
        Reports reports;
    } rows[] = {
        {"GREETING", {"120 wait\r\n"}, Result::NotWelcome, {{1, -1}}},
        {"USER", {"230 in already\r\n"}, Result::LoginRefused, {{1, -1}}},
        {"PASS", {"530 no\r\n"}, Result::LoginRefused, {{1, -1}}},
        {"SIZE", {"213 -1\r\n"}, Result::NoSize, {{5, -1}}},
        {"SIZE", {"213 2147483648\r\n"}, Result::NoSize, {{5, -1}}},
        {"TYPE", {"250 odd\r\n"}, Result::BinaryRefused, {{6, -1}}},
        {"PASV", {"227 (127,0,0,1,0,0)\r\n"}, Result::TransferFailed, {{8, -1}, {2, -1}}},
        {"RETR", {"550 gone\r\n"}, Result::TransferFailed, {{10, -1}, {2, -1}}},
        {"FINAL", {"451 broken\r\n"}, Result::TransferFailed, {{2, 100}, {2, -1}, {2, -1}}},
        // One receive is the reply; the rest is the next one.
        {"GREETING", {"2", "20 ready\r\n"}, Result::NotWelcome, {{1, -1}}},
        {"GREETING", {"220", " ready\r\n"}, Result::LoginRefused, {{1, -1}}},
        {"PASS", {"230-hello\r\n", "230 welcome\r\n"}, Result::NoSize, {{5, -1}}},
    };
    const Lines closing{""}, silence;
    for (const auto &row : rows) {
        for (const Lines &reply : {row.reply, closing, silence}) {
            if (reply != row.reply && row.reply.size() > 1)
                continue;
            SCOPED_TRACE(row.step + testing::PrintToString(reply));
            ScriptedFtpServer server(scriptWith(row.step, reply));
            const Download seen = download(server.port(), reply == silence ? kHasty : kPatient);
            EXPECT_EQ(seen.result, row.result);
            EXPECT_EQ(seen.buffer.data(), nullptr);
            EXPECT_EQ(seen.reports, row.reports);
            if (reply == closing)
                continue;
            ASSERT_TRUE(server.awaitLine("closed"));
            EXPECT_THAT(server.lines(), Contains("QUIT").Times(row.result < Result::LoginRefused));
        }
    }
}

TEST(DownloadToMemory, SaysWhyItHasNoConnection) {
    testing::internal::CaptureStderr();
    EXPECT_EQ(download(1).result, FtpResult::NotConnected);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "连接失败: 10061 (连接被拒绝)\n");

    // While the server attends to the first one, callers wait until its queue is full.
    ScriptedFtpServer busy;
    std::vector<UniqueSocket> callers;
    testing::internal::CaptureStderr();
    do
        callers.push_back(connectTcp("127.0.0.1", busy.port(), TimeBudget(kHasty)));
    while (callers.back() && callers.size() < 100);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "连接失败: 10060 (连接超时)\n");
}

TEST(DownloadToMemory, DataConnectionsThatFail) {
    ScriptedFtpServer unheard(scriptWith("PASV", {"227 (127,0,0,1,0,1)\r\n"}));
    EXPECT_EQ(download(unheard.port(), kHasty).reports, (Reports{{10, -1}, {2, -1}}));
    FtpScript script = scriptWith("RETR", {"150 coming\r\n"});
    script.keepsDataOpen = true;
    ScriptedFtpServer silent(script);
    const Download cut = download(silent.port(), kHasty);
    EXPECT_EQ(cut.result, FtpResult::TransferFailed);
    EXPECT_EQ(cut.buffer.data(), nullptr);
    EXPECT_EQ(cut.reports, (Reports{{2, 100}, {2, -1}, {2, -1}}));
}

TEST(DownloadToMemory, EndsWhenItsTimeIsOver) {
    ScriptedFtpServer server(scriptWith("SIZE", {}));
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(download(server.port(), {20s, 1000ms, 20s}).result, FtpResult::NoSize);
    EXPECT_LT(std::chrono::steady_clock::now() - start, 10s) << "each wait may take longer than the whole";
}

TEST(DownloadToMemory, KeepsToTheAnnouncedSize) {
    FtpScript script = scriptWith("SIZE", {"213 70000\r\n"});
    script.files["dir\\file"] = std::string(3000000, 'y');
    ScriptedFtpServer tooMuch(script);
    EXPECT_TRUE(download(tooMuch.port()).bytes == std::string(70000, 'y'));

    // And from a server that answers when it has the data connection, with the final reply right behind.
    script = scriptWith("SIZE", {"213 14\r\n"});
    script.replies["FINAL"] = {"150-coming\r\n150 now\r\n226 done\r\n"};
    script.acceptsFirst = true;
    ScriptedFtpServer tooLittle(script);
    const Download seen = download(tooLittle.port(), {20s, std::nullopt, 50ms});
    EXPECT_EQ(seen.result, FtpResult::Done);
    EXPECT_EQ(seen.bytes, std::string("0123456789\0\0\0\0", 14));
    EXPECT_EQ(seen.reports, (Reports{{2, 71}, {2, 100}}));
}

} // namespace
