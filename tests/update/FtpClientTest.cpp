#include "update/FtpControl.h"
#include "update/FtpTransfers.h"
#include "update/ScriptedFtpServer.h"

#include <algorithm>
#include <fstream>
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

FtpServer onLoopback(uint32_t port) {
    FtpServer server;
    server.address = "127.0.0.1";
    server.port = port;
    server.user = "maker";
    server.password = "secret word";
    server.timeoutMs = 3000;
    return server;
}

Download download(const FtpServer &server, const std::string &path = "dir\\file") {
    Download seen;
    DownloadBuffer buffer;
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    seen.result = downloadToMemory(server, path, buffer, &seen.size,
                                   {&keepReport, reinterpret_cast<uintptr_t>(&seen.reports)});
    seen.errors = testing::internal::GetCapturedStderr();
    seen.output = testing::internal::GetCapturedStdout();
    seen.hasBuffer = buffer.data() != nullptr;
    seen.bytes.assign(reinterpret_cast<const char *>(buffer.data()), buffer.size());
    return seen;
}

FtpScript scriptWithFile(const std::string &content = "0123456789") {
    FtpScript script;
    script.files["dir\\file"] = content;
    return script;
}

TEST(DownloadToMemory, FetchesTheFileInAFixedOrderOfCommands) {
    ScriptedFtpServer server(scriptWithFile());
    const Download seen = download(onLoopback(server.port()));
    EXPECT_EQ(seen.result, 1);
    EXPECT_EQ(seen.bytes, "0123456789");
    EXPECT_EQ(seen.size, 10);
    EXPECT_THAT(seen.reports, ElementsAre(Pair(2u, 100), Pair(2u, 100)));
    EXPECT_THAT(server.commands(), ElementsAre("USER maker", "PASS secret word", "SIZE dir\\file", "TYPE I",
                                               "PASV", "RETR dir\\file", "QUIT"));
    EXPECT_EQ(seen.errors, "");
    const std::string place = "127.0.0.1:" + std::to_string(server.port());
    EXPECT_THAT(seen.output, HasSubstr("尝试连接到 " + place + "...\n成功连接到 " + place + "\n"));
}

TEST(DownloadToMemory, ReportsEveryChunkAndTheEnd) {
    FtpScript script = scriptWithFile(std::string(400, 'x'));
    script.pieces["dir\\file"].assign(4, std::string(100, 'x'));
    ScriptedFtpServer server(script);
    EXPECT_THAT(download(onLoopback(server.port())).reports,
                ElementsAre(Pair(2u, 25), Pair(2u, 50), Pair(2u, 75), Pair(2u, 100), Pair(2u, 100)));
}

TEST(DownloadToMemory, CarriesLargeBinaryFiles) {
    std::string content(3 * 65536 + 17, '\0');
    for (size_t i = 0; i < content.size(); ++i)
        content[i] = static_cast<char>(i * 7 + i / 251);
    ScriptedFtpServer server(scriptWithFile(content));
    const Download seen = download(onLoopback(server.port()));
    EXPECT_EQ(seen.result, 1);
    EXPECT_TRUE(seen.bytes == content);
    EXPECT_TRUE(std::is_sorted(seen.reports.begin(), seen.reports.end()));
}

// What each step of a session makes of a server that closes, stays silent or answers something else there.
struct StepOutcome {
    const char *step;
    int32_t result;
    Reports reports; // without the progress of data that did arrive
    const char *wrongReply;
    const char *wrongMessage; // after wrongReply
};

const std::vector<StepOutcome> &stepOutcomes() {
    static const std::vector<StepOutcome> outcomes = {
        {"GREETING", -4, {{1, -1}}, "120 wait\r\n", ""},
        {"USER", -5, {{1, -1}}, "230 in already\r\n", "用户名验证失败: 230 in already"},
        {"PASS", -5, {{1, -1}}, "530 no\r\n", "密码验证失败: 530 no"},
        {"SIZE", -6, {{5, -1}}, "550 gone\r\n", "获取文件大小失败: 550 gone"},
        {"TYPE", -7, {{6, -1}}, "250 odd\r\n", "设置二进制模式失败: 250 odd"},
        {"PASV", -9, {{8, -1}, {2, -1}}, "425 no\r\n", ""},
        {"RETR", -9, {{10, -1}, {2, -1}}, "226 done already\r\n", ""},
        {"FINAL", -9, {{2, -1}, {2, -1}}, "451 broken\r\n", ""},
    };
    return outcomes;
}

void expectFailure(const Download &seen, const StepOutcome &outcome) {
    EXPECT_EQ(seen.result, outcome.result);
    EXPECT_FALSE(seen.hasBuffer);
    Reports failures;
    std::copy_if(seen.reports.begin(), seen.reports.end(), std::back_inserter(failures),
                 [](const auto &report) { return report.second < 0; });
    EXPECT_EQ(failures, outcome.reports);
}

TEST(DownloadToMemory, ServerClosesAtEachStep) {
    ScriptedFtpServer server;
    for (const StepOutcome &outcome : stepOutcomes()) {
        SCOPED_TRACE(outcome.step);
        FtpScript script = scriptWithFile();
        script.closesAt = outcome.step;
        server.setScript(script);
        expectFailure(download(onLoopback(server.port())), outcome);
    }
}

TEST(DownloadToMemory, ServerIsSilentAtEachStep) {
    ScriptedFtpServer server;
    FtpServer place = onLoopback(server.port());
    place.timeoutMs = 300;
    for (const StepOutcome &outcome : stepOutcomes()) {
        SCOPED_TRACE(outcome.step);
        FtpScript script = scriptWithFile();
        script.silentAt = outcome.step;
        server.setScript(script);
        const Download seen = download(place);
        expectFailure(seen, outcome);
        EXPECT_THAT(seen.errors, HasSubstr("接收响应失败: 10060"));
    }
}

TEST(DownloadToMemory, WrongReplyAtEachStep) {
    ScriptedFtpServer server;
    for (const StepOutcome &outcome : stepOutcomes()) {
        SCOPED_TRACE(outcome.step);
        FtpScript script = scriptWithFile();
        script.replies[outcome.step] = outcome.wrongReply;
        server.setScript(script);
        const Download seen = download(onLoopback(server.port()));
        expectFailure(seen, outcome);
        EXPECT_THAT(seen.errors, HasSubstr(outcome.wrongMessage));
    }
}

TEST(DownloadToMemory, UnreadableReplyAtEachStep) {
    ScriptedFtpServer server;
    for (const StepOutcome &outcome : stepOutcomes())
        for (const std::string &reply :
             {std::string("hello\r\n"), std::string(5000, '\xFF'), std::string(1, '\0')}) {
            SCOPED_TRACE(outcome.step + reply.substr(0, 5));
            FtpScript script = scriptWithFile();
            script.replies[outcome.step] = reply;
            server.setScript(script);
            const Download seen = download(onLoopback(server.port()));
            expectFailure(seen, outcome);
            EXPECT_THAT(seen.errors, HasSubstr("解析响应代码失败"));
        }
}

TEST(DownloadToMemory, NoServer) {
    uint32_t port = 0;
    { port = ScriptedFtpServer().port(); }
    const Download refused = download(onLoopback(port));
    EXPECT_EQ(refused.result, -3);
    EXPECT_THAT(refused.reports, ElementsAre(Pair(1u, -1)));
    EXPECT_THAT(refused.errors, HasSubstr("连接失败: 10061 (连接被拒绝)"));

    FtpServer nowhere = onLoopback(port);
    for (const char *address : {"", "localhost", "1.2.3", "256.0.0.1"}) {
        nowhere.address = address;
        const Download invalid = download(nowhere);
        EXPECT_EQ(invalid.result, -3) << address;
        EXPECT_THAT(invalid.errors, HasSubstr("无效的服务器IP地址: ")) << address;
    }
}

// One receive is one reply.
TEST(DownloadToMemory, SplitAndMultiLineReplies) {
    const struct {
        const char *step;
        std::string reply;
        size_t splitLength; // 0: in one piece
        int32_t result;
    } rows[] = {
        {"PASS", "230-hello\r\n230 welcome\r\n", 0, 1},
        {"GREETING", "220-hello\r\n220 ready\r\n", 0, 1},
        {"GREETING", "220 ready\r\n", 1, -4},               // the code is "2"
        {"GREETING", "220 ready\r\n", 5, -5},               // the rest is taken for the reply to USER
        {"GREETING", "220-hello\r\n220 ready\r\n", 11, -5}, // so is the second line
        {"PASS", "230-hello\r\n230 welcome\r\n", 11, -6},
        {"SIZE", "213 10\r\n", 4, -6},
        {"TYPE", "200 ok\r\n", 3, -9},
        {"PASV", "227 (0,0,0,0,1,1)\r\n", 10, -9},
    };
    ScriptedFtpServer server;
    for (const auto &row : rows) {
        FtpScript script = scriptWithFile();
        script.replies[row.step] = row.reply;
        if (row.splitLength > 0) {
            script.splitsAt = row.step;
            script.splitLength = row.splitLength;
        }
        server.setScript(script);
        EXPECT_EQ(download(onLoopback(server.port())).result, row.result)
            << row.step << " " << row.splitLength;
    }
}

TEST(DownloadToMemory, SizesThatAreNotTrue) {
    const struct {
        const char *announced;
        int32_t result;
        std::string bytes;
    } rows[] = {
        {"4", 1, "0123"}, // the rest is dropped
        {"14", 1, std::string("0123456789\0\0\0\0", 14)},
        {"0", 1, ""},
        {"-1", -6, ""},
        {"-10", -6, ""},
        {"2147483648", -6, ""},
        {"9223372036854775808", -6, ""},
        {"99999999999999999999999999", -6, ""},
        {"ten", -6, ""},
        {"", -6, ""},
    };
    ScriptedFtpServer server;
    for (const auto &row : rows) {
        SCOPED_TRACE(row.announced);
        FtpScript script = scriptWithFile();
        script.replies["SIZE"] = std::string("213 ") + row.announced + "\r\n";
        server.setScript(script);
        const Download seen = download(onLoopback(server.port()));
        EXPECT_EQ(seen.result, row.result);
        EXPECT_EQ(seen.bytes, row.bytes);
        if (row.result == -6) {
            EXPECT_THAT(seen.errors, HasSubstr("解析文件大小失败"));
            EXPECT_THAT(seen.reports, ElementsAre(Pair(5u, -1)));
        }
    }
}

TEST(DownloadToMemory, ManyBytesBeyondTheSizeAreDropped) {
    FtpScript script = scriptWithFile();
    script.pieces["dir\\file"] = {std::string(2000000, 'y')};
    ScriptedFtpServer server(script);
    const Download seen = download(onLoopback(server.port()));
    EXPECT_EQ(seen.result, 1);
    EXPECT_EQ(seen.bytes, "yyyyyyyyyy");
}

TEST(DownloadToMemory, PassiveRepliesWithoutAUsablePort) {
    ScriptedFtpServer server;
    for (const char *reply :
         {"227 no parentheses 1,2,3,4,5,6\r\n", "227 (127,0,0,1,0,0)\r\n", "227 (127,0,0,1)\r\n", "227 (\r\n",
          "227 ()\r\n", "227 (127,0,0,1,99999999999999999999,1)\r\n", "227 (127,0,0,1,256,1)\r\n"}) {
        FtpScript script = scriptWithFile();
        script.replies["PASV"] = reply;
        server.setScript(script);
        const Download seen = download(onLoopback(server.port()));
        EXPECT_EQ(seen.result, -9) << reply;
        EXPECT_THAT(seen.reports, ElementsAre(Pair(8u, -1), Pair(2u, -1))) << reply;
    }
    EXPECT_EQ(server.commands().back(), "QUIT"); // RETR was not tried
    EXPECT_EQ(*(server.commands().end() - 2), "PASV");
}

TEST(DownloadToMemory, DataConnectionThatFails) {
    uint32_t closedPort = 0;
    { closedPort = ScriptedFtpServer().port(); }
    FtpScript script = scriptWithFile();
    script.replies["PASV"] = "227 (127,0,0,1," + std::to_string(closedPort / 256) + "," +
                             std::to_string(closedPort % 256) + ")\r\n";
    ScriptedFtpServer server(script);
    FtpServer place = onLoopback(server.port());
    place.timeoutMs = 300;
    const Download notConnected = download(place);
    EXPECT_EQ(notConnected.result, -9);
    EXPECT_THAT(notConnected.reports, ElementsAre(Pair(10u, -1), Pair(2u, -1)));

    script = scriptWithFile();
    script.resetsData = true;
    ScriptedFtpServer resetting(script);
    const Download reset = download(onLoopback(resetting.port()));
    EXPECT_EQ(reset.result, -9);
    EXPECT_FALSE(reset.hasBuffer);
    EXPECT_THAT(reset.reports, ElementsAre(Pair(2u, 100), Pair(2u, -1), Pair(2u, -1)));
}

TEST(DownloadBuffer, ThatCannotBeHadIsRefused) {
    DownloadBuffer buffer;
    EXPECT_FALSE(buffer.allocate(SIZE_MAX / 2));
    EXPECT_EQ(buffer.data(), nullptr);
    EXPECT_EQ(buffer.size(), 0u);
}

// The operations that the update does not use, over one session each.
class Session : public testing::Test {
protected:
    ScriptedFtpServer server_{scriptWithFile("line one\r\nline two\r\n")};
    FtpSession session_;
    Reports reports_;
    FtpProgress progress_{&keepReport, reinterpret_cast<uintptr_t>(&reports_)};
    std::string localFile_ = "active_download.tmp";

    void open(FtpScript script) {
        server_.setScript(std::move(script));
        ASSERT_EQ(openSession(onLoopback(server_.port()), session_), 1);
        EXPECT_EQ(session_.localAddress, "127.0.0.1");
    }
    void TearDown() override {
        if (session_.control) {
            EXPECT_EQ(closeSession(session_), 1);
        }
        EXPECT_FALSE(session_.control);
        std::remove(localFile_.c_str());
    }
    std::string localContent() const {
        std::ifstream file(localFile_, std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(file), {});
    }
};

TEST_F(Session, AsksForTheFileTime) {
    open(scriptWithFile());
    EXPECT_EQ(getFileTime(session_.control.get(), "dir\\file"), "2024-05-01 13:45:00");
    EXPECT_EQ(server_.commands().back(), "MDTM dir\\file");
}

TEST_F(Session, ReportsAFileTimeThatIsNone) {
    FtpScript script;
    script.replies["MDTM"] = "213 yesterday evening\r\n";
    open(script);
    testing::internal::CaptureStderr();
    EXPECT_EQ(getFileTime(session_.control.get(), "f"), "");
    EXPECT_THAT(testing::internal::GetCapturedStderr(),
                HasSubstr("获取文件修改时间失败: 213 yesterday evening"));
}

TEST_F(Session, Lists) {
    open(scriptWithFile());
    std::string listing;
    EXPECT_EQ(listPassive(session_, "dir\\file", listing), 1);
    EXPECT_EQ(listing, "0123456789");
    EXPECT_EQ(server_.commands().back(), "LIST dir\\file");
}

TEST_F(Session, Uploads) {
    open({});
    const std::string bytes(100000, 'u');
    EXPECT_EQ(uploadPassive(session_, bytes.data(), bytes.size(), "new\\file", progress_), 1);
    EXPECT_TRUE(server_.uploaded() == bytes);
    EXPECT_THAT(reports_, ElementsAre(Pair(2u, 65), Pair(2u, 100), Pair(2u, 100)));
}

TEST_F(Session, UploadNamesTheStepThatFailed) {
    const struct {
        const char *step, *reply;
        int32_t result;
    } rows[] = {{"PASV", "500 no\r\n", -5},
                {"PASV", "227 none\r\n", -6},
                {"STOR", "553 no\r\n", -7},
                {"FINAL", "452 full\r\n", -10}};
    for (const auto &row : rows) {
        FtpScript script;
        script.replies[row.step] = row.reply;
        open(script);
        EXPECT_EQ(uploadPassive(session_, "abc", 3, "f", {}), row.result) << row.step;
        closeSession(session_);
    }
}

TEST_F(Session, DownloadsInActiveModeToAFile) {
    open(scriptWithFile(std::string(70000, 'a')));
    testing::internal::CaptureStdout();
    EXPECT_TRUE(downloadActive(session_, "dir\\file", localFile_, 70000));
    const std::string output = testing::internal::GetCapturedStdout();
    EXPECT_TRUE(localContent() == std::string(70000, 'a'));
    EXPECT_THAT(output, HasSubstr("数据连接将使用端口: "));
    EXPECT_THAT(output, HasSubstr("开始下载文件..."));
    EXPECT_THAT(output, HasSubstr("\r下载进度: 100%"));
    const std::vector<std::string> commands = server_.commands();
    EXPECT_THAT(*(commands.end() - 2), HasSubstr("PORT 127,0,0,1,"));
    EXPECT_EQ(commands.back(), "RETR dir\\file");
}

TEST_F(Session, ActiveModeSaysWhatFailed) {
    const struct {
        const char *step, *reply;
        const char *localFile;
        const char *message;
    } rows[] = {{"PORT", "500 no\r\n", "active_download.tmp", "发送PORT命令失败: 500 no"},
                {"RETR", "550 gone\r\n", "active_download.tmp", "开始下载失败: 550 gone"},
                {"FINAL", "426 cut\r\n", "active_download.tmp", "文件下载未完成: 426 cut"},
                {"NONE", "", "no folder\\file", "无法打开本地文件进行写入: "}};
    for (const auto &row : rows) {
        FtpScript script = scriptWithFile();
        script.replies[row.step] = row.reply;
        open(script);
        testing::internal::CaptureStderr();
        EXPECT_FALSE(downloadActive(session_, "dir\\file", row.localFile, 10));
        EXPECT_THAT(testing::internal::GetCapturedStderr(), HasSubstr(row.message));
        closeSession(session_);
    }
}

TEST_F(Session, ActiveModeDoesNotWaitForEverForTheServer) {
    FtpScript script = scriptWithFile();
    script.opensNoData = true;
    server_.setScript(script);
    FtpServer place = onLoopback(server_.port());
    place.timeoutMs = 300;
    ASSERT_EQ(openSession(place, session_), 1);
    testing::internal::CaptureStderr();
    EXPECT_FALSE(downloadActive(session_, "dir\\file", localFile_, 10));
    EXPECT_THAT(testing::internal::GetCapturedStderr(), HasSubstr("接受数据连接失败: 10060"));
}

} // namespace
