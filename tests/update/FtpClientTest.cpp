// The FTP client against a server that does what a test says.

#include "update/FtpTransfers.h"
#include "update/ScriptedFtpServer.h"

#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::ElementsAre;
using testing::Pair;

namespace {

using Reports = std::vector<std::pair<uint32_t, int32_t>>;

void keepReport(uint32_t stage, int32_t value, uintptr_t context) {
    reinterpret_cast<Reports *>(context)->emplace_back(stage, value);
}

// One downloadToMemory with what can be seen of it.
struct Download {
    int32_t result;
    std::string bytes;
    bool hasBuffer;
    int64_t size = -77; // untouched
    Reports reports;
};

Download download(uint32_t port, const std::string &address = "127.0.0.1", uint32_t timeoutMs = 3000) {
    FtpServer server;
    server.address = address;
    server.port = port;
    server.user = "maker";
    server.password = "secret word";
    server.timeoutMs = timeoutMs;
    Download seen;
    DownloadBuffer buffer;
    seen.result = downloadToMemory(server, "dir\\file", buffer, &seen.size,
                                   {&keepReport, reinterpret_cast<uintptr_t>(&seen.reports)});
    seen.hasBuffer = buffer.data() != nullptr;
    seen.bytes.assign(reinterpret_cast<const char *>(buffer.data()), buffer.size());
    return seen;
}

FtpScript scriptWith(const std::string &step, const FtpStep &behaviour) {
    FtpScript script;
    script.files["dir\\file"] = "0123456789";
    script.steps[step] = behaviour;
    return script;
}

uint32_t closedPort() {
    return ScriptedFtpServer().port();
}

TEST(DownloadToMemory, FetchesTheFileInAFixedOrderAndReportsEveryChunk) {
    FtpScript script;
    script.files["dir\\file"] = std::string(400, 'x');
    script.pieceSize = 100;
    // These replies count by their class.
    script.steps = {{"GREETING", {"211 hello\r\n"}},
                    {"PASS", {"230-hello\r\n230 welcome\r\n"}},
                    {"RETR", {"125 now\r\n"}},
                    {"FINAL", {"250 all sent\r\n"}}};
    ScriptedFtpServer server(script);
    const Download seen = download(server.port());
    EXPECT_EQ(seen.result, 1);
    EXPECT_EQ(seen.bytes, std::string(400, 'x'));
    EXPECT_EQ(seen.size, 400);
    EXPECT_THAT(seen.reports,
                ElementsAre(Pair(2u, 25), Pair(2u, 50), Pair(2u, 75), Pair(2u, 100), Pair(2u, 100)));
    EXPECT_THAT(server.commands(), ElementsAre("USER maker", "PASS secret word", "SIZE dir\\file", "TYPE I",
                                               "PASV", "RETR dir\\file", "QUIT"));
}

TEST(DownloadToMemory, NamesTheStepThatFailed) {
    const struct {
        const char *step;
        int32_t result;
        Reports failures;
        const char *wrongReply;
    } rows[] = {
        {"GREETING", -4, {{1, -1}}, "120 wait\r\n"},
        {"USER", -5, {{1, -1}}, "230 in already\r\n"},
        {"PASS", -5, {{1, -1}}, "530 no\r\n"},
        {"SIZE", -6, {{5, -1}}, "213 -1\r\n"},
        {"TYPE", -7, {{6, -1}}, "250 odd\r\n"},
        {"PASV", -9, {{8, -1}, {2, -1}}, "227 (127,0,0,1,0,0)\r\n"},
        {"RETR", -9, {{10, -1}, {2, -1}}, "226 done already\r\n"},
        {"FINAL", -9, {{2, -1}, {2, -1}}, "451 broken\r\n"},
    };
    ScriptedFtpServer server;
    for (const auto &row : rows) {
        const FtpStep faults[] = {
            {row.wrongReply},      {std::string(5000, '\xFF')}, {std::string(1, '\0')},
            {"", FtpStep::Closes}, {"", FtpStep::StaysSilent},
        };
        for (const FtpStep &fault : faults) {
            server.setScript(scriptWith(row.step, fault));
            const uint32_t timeoutMs = fault.action == FtpStep::StaysSilent ? 300 : 3000;
            const Download seen = download(server.port(), "127.0.0.1", timeoutMs);
            EXPECT_EQ(seen.result, row.result) << row.step << " " << fault.reply.substr(0, 10);
            EXPECT_FALSE(seen.hasBuffer);
            Reports failures; // without the progress of data that did arrive
            std::copy_if(seen.reports.begin(), seen.reports.end(), std::back_inserter(failures),
                         [](const auto &report) { return report.second < 0; });
            EXPECT_EQ(failures, row.failures) << row.step << " " << fault.reply.substr(0, 10);
        }
    }
}

TEST(DownloadToMemory, ConnectionsThatFail) {
    const Download refused = download(closedPort());
    EXPECT_EQ(refused.result, -3);
    EXPECT_THAT(refused.reports, ElementsAre(Pair(1u, -1)));
    EXPECT_EQ(download(21, "localhost").result, -3) << "not a dotted address";

    const uint32_t port = closedPort();
    ScriptedFtpServer server(scriptWith("PASV", {"227 (127,0,0,1," + std::to_string(port / 256) + "," +
                                                 std::to_string(port % 256) + ")\r\n"}));
    const Download withoutData = download(server.port());
    EXPECT_EQ(withoutData.result, -9);
    EXPECT_THAT(withoutData.reports, ElementsAre(Pair(10u, -1), Pair(2u, -1)));

    FtpScript script = scriptWith("RETR", {"150 coming\r\n"});
    script.resetsData = true;
    server.setScript(script);
    const Download reset = download(server.port());
    EXPECT_EQ(reset.result, -9);
    EXPECT_FALSE(reset.hasBuffer);
    EXPECT_THAT(reset.reports, ElementsAre(Pair(2u, 100), Pair(2u, -1), Pair(2u, -1)));
}

TEST(DownloadToMemory, KeepsToTheAnnouncedSize) {
    const std::string tooMuch(3000000, 'y');
    const struct {
        const char *announced;
        std::string sent, kept;
        int32_t lastPercent; // of the data
    } rows[] = {
        {"14", "0123456789", std::string("0123456789\0\0\0\0", 14), 71},
        {"4", "0123456789", "0123", 250},
        {"0", "0123456789", "", 0},
        {"70000", tooMuch, tooMuch.substr(0, 70000), 4285},
    };
    for (const auto &row : rows) {
        FtpScript script = scriptWith("SIZE", {std::string("213 ") + row.announced + "\r\n"});
        script.files["dir\\file"] = row.sent;
        ScriptedFtpServer server(script);
        const Download seen = download(server.port());
        EXPECT_EQ(seen.result, 1) << row.announced;
        EXPECT_TRUE(seen.hasBuffer) << row.announced;
        EXPECT_TRUE(seen.bytes == row.kept) << row.announced;
        EXPECT_THAT(*(seen.reports.end() - 2), Pair(2u, row.lastPercent)) << row.announced;
    }
}

} // namespace
