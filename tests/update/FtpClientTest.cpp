// The FTP client against a server that does what a test says. What goes well with a real server is in
// FtpServerTest.

#include "update/FtpControl.h"
#include "update/FtpTransfers.h"
#include "update/ScriptedFtpServer.h"

#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::ElementsAre;
using testing::HasSubstr;
using testing::Pair;

namespace {

using Reports = std::vector<std::pair<uint32_t, int32_t>>;

void keepReport(uint32_t stage, int32_t value, uintptr_t context) {
    reinterpret_cast<Reports *>(context)->emplace_back(stage, value);
}

// One downloadToMemory with everything that can be seen of it.
struct Download {
    int32_t result;
    std::string bytes;
    bool hasBuffer;
    int64_t size = -77; // untouched
    Reports reports;
    std::string output, errors; // the standard streams
};

FtpServer onLoopback(uint32_t port, uint32_t timeoutMs = 3000) {
    FtpServer server;
    server.address = "127.0.0.1";
    server.port = port;
    server.user = "maker";
    server.password = "secret word";
    server.timeoutMs = timeoutMs;
    return server;
}

Download download(const FtpServer &server) {
    Download seen;
    DownloadBuffer buffer;
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    seen.result = downloadToMemory(server, "dir\\file", buffer, &seen.size,
                                   {&keepReport, reinterpret_cast<uintptr_t>(&seen.reports)});
    seen.errors = testing::internal::GetCapturedStderr();
    seen.output = testing::internal::GetCapturedStdout();
    seen.hasBuffer = buffer.data() != nullptr;
    seen.bytes.assign(reinterpret_cast<const char *>(buffer.data()), buffer.size());
    return seen;
}

FtpScript scriptWith(const std::string &step, const FtpStep &behaviour) {
    FtpScript script;
    script.files["dir\\file"] = {"0123456789"};
    script.steps[step] = behaviour;
    return script;
}

Download downloadWith(const FtpScript &script) {
    ScriptedFtpServer server(script);
    return download(onLoopback(server.port()));
}

uint32_t closedPort() {
    return ScriptedFtpServer().port();
}

TEST(DownloadToMemory, FetchesTheFileInAFixedOrderAndReportsEveryChunk) {
    FtpScript script;
    script.files["dir\\file"].assign(4, std::string(100, 'x'));
    ScriptedFtpServer server(script);
    const Download seen = download(onLoopback(server.port()));
    EXPECT_EQ(seen.result, 1);
    EXPECT_EQ(seen.bytes, std::string(400, 'x'));
    EXPECT_EQ(seen.size, 400);
    EXPECT_THAT(seen.reports,
                ElementsAre(Pair(2u, 25), Pair(2u, 50), Pair(2u, 75), Pair(2u, 100), Pair(2u, 100)));
    EXPECT_THAT(server.commands(), ElementsAre("USER maker", "PASS secret word", "SIZE dir\\file", "TYPE I",
                                               "PASV", "RETR dir\\file", "QUIT"));
    EXPECT_EQ(seen.errors, "");
    const std::string place = "127.0.0.1:" + std::to_string(server.port());
    EXPECT_THAT(seen.output, HasSubstr("尝试连接到 " + place + "...\n成功连接到 " + place + "\n"));
}

TEST(DownloadToMemory, NamesTheStepThatFailed) {
    const struct {
        const char *step;
        int32_t result;
        Reports failures;
        const char *wrongReply, *wrongMessage;
    } rows[] = {
        {"GREETING", -4, {{1, -1}}, "120 wait\r\n", ""},
        {"USER", -5, {{1, -1}}, "230 in already\r\n", "用户名验证失败: 230 in already"},
        {"PASS", -5, {{1, -1}}, "530 no\r\n", "密码验证失败: 530 no"},
        {"SIZE", -6, {{5, -1}}, "550 gone\r\n", "获取文件大小失败: 550 gone"},
        {"TYPE", -7, {{6, -1}}, "250 odd\r\n", "设置二进制模式失败: 250 odd"},
        {"PASV", -9, {{8, -1}, {2, -1}}, "425 no\r\n", ""},
        {"RETR", -9, {{10, -1}, {2, -1}}, "226 done already\r\n", ""},
        {"FINAL", -9, {{2, -1}, {2, -1}}, "451 broken\r\n", ""},
    };
    const char *const unreadable = "解析响应代码失败";
    ScriptedFtpServer server;
    for (const auto &row : rows) {
        const struct {
            FtpStep behaviour;
            std::string message;
        } faults[] = {
            {{row.wrongReply}, row.wrongMessage},
            {{"hello\r\n"}, unreadable},
            {{std::string(5000, '\xFF')}, unreadable},
            {{std::string(1, '\0')}, unreadable},
            {{"", 0, FtpStep::Closes}, ""},
            {{"", 0, FtpStep::StaysSilent}, "接收响应失败: 10060"},
        };
        for (const auto &fault : faults) {
            SCOPED_TRACE(row.step + (" " + fault.message));
            server.setScript(scriptWith(row.step, fault.behaviour));
            const Download seen = download(onLoopback(server.port(), 300));
            EXPECT_EQ(seen.result, row.result);
            EXPECT_FALSE(seen.hasBuffer);
            EXPECT_THAT(seen.errors, HasSubstr(fault.message));
            Reports failures; // without the progress of data that did arrive
            std::copy_if(seen.reports.begin(), seen.reports.end(), std::back_inserter(failures),
                         [](const auto &report) { return report.second < 0; });
            EXPECT_EQ(failures, row.failures);
        }
    }
}

TEST(DownloadToMemory, NeedsAnAddressAndAServer) {
    FtpServer server = onLoopback(closedPort());
    const Download refused = download(server);
    EXPECT_EQ(refused.result, -3);
    EXPECT_THAT(refused.reports, ElementsAre(Pair(1u, -1)));
    EXPECT_THAT(refused.errors, HasSubstr("连接失败: 10061 (连接被拒绝)"));
    for (const char *address : {"", "localhost", "256.0.0.1"}) {
        server.address = address;
        const Download invalid = download(server);
        EXPECT_EQ(invalid.result, -3) << address;
        EXPECT_THAT(invalid.errors, HasSubstr("无效的服务器IP地址: ")) << address;
    }
}

TEST(DownloadToMemory, TakesOneReceiveForOneReply) {
    const struct {
        const char *step;
        FtpStep behaviour;
        int32_t result;
    } rows[] = {
        {"GREETING", {"211 hello\r\n"}, 1}, // some replies count by their class
        {"RETR", {"125 now\r\n"}, 1},
        {"FINAL", {"250 all sent\r\n"}, 1},
        {"PASS", {"230-hello\r\n230 welcome\r\n"}, 1},
        {"GREETING", {"220 ready\r\n", 1}, -4},               // the code is "2"
        {"GREETING", {"220 ready\r\n", 5}, -5},               // the rest is taken for the reply to USER
        {"GREETING", {"220-hello\r\n220 ready\r\n", 11}, -5}, // so is the second line
        {"SIZE", {"213 10\r\n", 4}, -6},
        {"PASV", {"227 (0,0,0,0,1,1)\r\n", 10}, -9},
    };
    for (const auto &row : rows)
        EXPECT_EQ(downloadWith(scriptWith(row.step, row.behaviour)).result, row.result)
            << row.step << " " << row.behaviour.splitAt;
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
        script.files["dir\\file"] = {row.sent};
        const Download seen = downloadWith(script);
        EXPECT_EQ(seen.result, 1) << row.announced;
        EXPECT_TRUE(seen.hasBuffer) << row.announced;
        EXPECT_TRUE(seen.bytes == row.kept) << row.announced;
        EXPECT_THAT(*(seen.reports.end() - 2), Pair(2u, row.lastPercent)) << row.announced;
    }
}

TEST(DownloadToMemory, RefusesSizesAndPortsThatAreNone) {
    for (const char *size : {"-1", "2147483648", "9223372036854775808", "ten"}) {
        const Download seen = downloadWith(scriptWith("SIZE", {std::string("213 ") + size + "\r\n"}));
        EXPECT_EQ(seen.result, -6) << size;
        EXPECT_THAT(seen.errors, HasSubstr("解析文件大小失败")) << size;
        EXPECT_THAT(seen.reports, ElementsAre(Pair(5u, -1))) << size;
    }
    for (const char *port :
         {"1,2,3,4,5,6", "(127,0,0,1,0,0)", "(127,0,0,1,99999999999999999999,1)", "(127,0,0,1,256,1)"}) {
        ScriptedFtpServer server(scriptWith("PASV", {std::string("227 ") + port + "\r\n"}));
        const Download seen = download(onLoopback(server.port()));
        EXPECT_EQ(seen.result, -9) << port;
        EXPECT_THAT(seen.reports, ElementsAre(Pair(8u, -1), Pair(2u, -1))) << port;
        EXPECT_EQ(*(server.commands().end() - 2), "PASV") << port; // RETR is not tried
    }
}

TEST(DownloadToMemory, DataConnectionThatFails) {
    const uint32_t port = closedPort();
    const FtpStep passive = {"227 (127,0,0,1," + std::to_string(port / 256) + "," +
                             std::to_string(port % 256) + ")\r\n"};
    const Download notConnected = downloadWith(scriptWith("PASV", passive));
    EXPECT_EQ(notConnected.result, -9);
    EXPECT_THAT(notConnected.reports, ElementsAre(Pair(10u, -1), Pair(2u, -1)));

    FtpScript script = scriptWith("RETR", {"150 coming\r\n"});
    script.resetsData = true;
    const Download reset = downloadWith(script);
    EXPECT_EQ(reset.result, -9);
    EXPECT_FALSE(reset.hasBuffer);
    EXPECT_THAT(reset.reports, ElementsAre(Pair(2u, 100), Pair(2u, -1), Pair(2u, -1)));
}

// The operations that the update does not use.
class Session : public testing::Test {
protected:
    ScriptedFtpServer server_;
    FtpSession session_;

    void TearDown() override { std::remove("active_download.tmp"); }
    void open(const FtpScript &script) {
        server_.setScript(script);
        ASSERT_EQ(openSession(onLoopback(server_.port(), 300), session_), 1);
    }
};

TEST_F(Session, UploadNamesTheStepThatFailed) {
    const struct {
        const char *step, *reply;
        int32_t result;
    } rows[] = {{"PASV", "500 no\r\n", -5},
                {"PASV", "227 none\r\n", -6},
                {"STOR", "553 no\r\n", -7},
                {"FINAL", "452 full\r\n", -10}};
    for (const auto &row : rows) {
        open(scriptWith(row.step, {row.reply}));
        EXPECT_EQ(uploadPassive(session_, "abc", 3, "f", {}), row.result) << row.step;
        closeSession(session_);
    }
}

TEST_F(Session, ActiveModeSaysWhatFailed) {
    const struct {
        const char *step, *reply;
        bool opensNoData;
        const char *localFile, *message;
    } rows[] = {{"PORT", "500 no\r\n", false, "active_download.tmp", "发送PORT命令失败: 500 no"},
                {"RETR", "550 gone\r\n", false, "active_download.tmp", "开始下载失败: 550 gone"},
                {"RETR", "150 soon\r\n", true, "active_download.tmp", "接受数据连接失败: 10060"},
                {"FINAL", "426 cut\r\n", false, "active_download.tmp", "文件下载未完成: 426 cut"},
                {"RETR", "150 soon\r\n", false, "no folder\\file", "无法打开本地文件进行写入: "}};
    for (const auto &row : rows) {
        FtpScript script = scriptWith(row.step, {row.reply});
        script.opensNoData = row.opensNoData;
        open(script);
        testing::internal::CaptureStderr();
        EXPECT_FALSE(downloadActive(session_, "dir\\file", row.localFile, 10));
        EXPECT_THAT(testing::internal::GetCapturedStderr(), HasSubstr(row.message));
        closeSession(session_);
    }
}

} // namespace
