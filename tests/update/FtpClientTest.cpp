// The FTP client against a server that does what a test says.

#include "update/FtpDownload.h"
#include "update/FtpPassive.h"
#include "update/ScriptedFtpServer.h"

#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Pair;

namespace {

using Reports = std::vector<std::pair<uint32_t, int32_t>>;

constexpr TimeLimits kPatient{20s, std::nullopt, 20s};

void keepReport(uint32_t stage, int32_t value, uintptr_t context) {
    reinterpret_cast<Reports *>(context)->emplace_back(stage, value);
}

FtpServer serverAt(uint32_t port, const std::string &address = "127.0.0.1") {
    return {address, port, "maker", "secret word"};
}

// One downloadToMemory with what can be seen of it.
struct Download {
    DownloadResult result;
    std::string bytes;
    bool hasBuffer;
    int64_t size = -77; // untouched
    Reports reports;
    std::string diagnostics;
};

Download download(const FtpServer &server, const TimeLimits &limits = kPatient) {
    Download seen;
    DownloadBuffer buffer;
    testing::internal::CaptureStderr();
    seen.result = downloadToMemory(server, "dir\\file", buffer, &seen.size,
                                   {&keepReport, reinterpret_cast<uintptr_t>(&seen.reports)}, limits);
    seen.diagnostics = testing::internal::GetCapturedStderr();
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
    const Download seen = download(serverAt(server.port()));
    EXPECT_EQ(seen.result, DownloadResult::Done);
    EXPECT_EQ(seen.bytes, std::string(400, 'x'));
    EXPECT_EQ(seen.size, 400);
    EXPECT_THAT(seen.reports,
                ElementsAre(Pair(2u, 25), Pair(2u, 50), Pair(2u, 75), Pair(2u, 100), Pair(2u, 100)));
    EXPECT_THAT(server.commands(), ElementsAre("USER maker", "PASS secret word", "SIZE dir\\file", "TYPE I",
                                               "PASV", "RETR dir\\file", "QUIT"));
}

TEST(DownloadToMemory, NamesTheStepThatFailedSaysGoodByeAndCloses) {
    using Result = DownloadResult;
    const struct {
        const char *step;
        Result result;
        Reports failures;
        const char *wrongReply;
        bool isTriedInSilence;
    } rows[] = {
        {"GREETING", Result::NotWelcome, {{1, -1}}, "120 wait\r\n", true},
        {"USER", Result::LoginRefused, {{1, -1}}, "230 in already\r\n", false},
        {"PASS", Result::LoginRefused, {{1, -1}}, "530 no\r\n", false},
        {"SIZE", Result::NoSize, {{5, -1}}, "213 -1\r\n", true},
        {"TYPE", Result::BinaryRefused, {{6, -1}}, "250 odd\r\n", false},
        {"PASV", Result::TransferFailed, {{8, -1}, {2, -1}}, "227 (127,0,0,1,0,0)\r\n", false},
        {"RETR", Result::TransferFailed, {{10, -1}, {2, -1}}, "226 done already\r\n", true},
        {"FINAL", Result::TransferFailed, {{2, -1}, {2, -1}}, "451 broken\r\n", true},
    };
    ScriptedFtpServer server;
    int sessions = 0;
    for (const auto &row : rows) {
        const FtpStep faults[] = {
            {row.wrongReply},      {std::string(1023, '\xFF')}, {std::string(1, '\0')},
            {"", FtpStep::Closes}, {"", FtpStep::StaysSilent},
        };
        for (const FtpStep &fault : faults) {
            const bool isSilent = fault.action == FtpStep::StaysSilent;
            if (isSilent && !row.isTriedInSilence)
                continue;
            SCOPED_TRACE(row.step + fault.reply.substr(0, 10));
            server.setScript(scriptWith(row.step, fault));
            const Download seen = download(serverAt(server.port()),
                                           isSilent ? TimeLimits{500ms, std::nullopt, 100ms} : kPatient);
            EXPECT_EQ(seen.result, row.result);
            EXPECT_FALSE(seen.hasBuffer);
            Reports failures; // without the progress of data that did arrive
            std::copy_if(seen.reports.begin(), seen.reports.end(), std::back_inserter(failures),
                         [](const auto &report) { return report.second < 0; });
            EXPECT_EQ(failures, row.failures);
            if (fault.action == FtpStep::Closes)
                continue;
            ASSERT_TRUE(server.awaitClosedSessions(++sessions));
            const bool isLoggedIn = row.result < Result::LoginRefused;
            const std::vector<std::string> commands = server.commands();
            EXPECT_EQ(!commands.empty() && commands.back() == "QUIT", isLoggedIn);
        }
    }
}

TEST(DownloadToMemory, TakesOneReceiveAsTheReply) {
    const struct {
        const char *step;
        FtpStep behaviour;
        DownloadResult result;
    } rows[] = {
        {"GREETING", {"2", FtpStep::Replies, "20 ready\r\n"}, DownloadResult::NotWelcome},
        {"GREETING", {"220", FtpStep::Replies, " ready\r\n"}, DownloadResult::LoginRefused},
        {"PASS", {"230-hello\r\n", FtpStep::Replies, "230 welcome\r\n"}, DownloadResult::NoSize},
    };
    for (const auto &row : rows) {
        ScriptedFtpServer server(scriptWith(row.step, row.behaviour));
        EXPECT_EQ(download(serverAt(server.port())).result, row.result) << row.behaviour.reply;
    }
}

TEST(DownloadToMemory, ConnectionsThatFail) {
    const uint32_t closedPort = ScriptedFtpServer().port();
    const Download refused = download(serverAt(closedPort));
    EXPECT_EQ(refused.result, DownloadResult::NotConnected);
    EXPECT_THAT(refused.reports, ElementsAre(Pair(1u, -1)));
    EXPECT_EQ(refused.diagnostics, "连接失败: 10061 (连接被拒绝)\n");
    EXPECT_EQ(download(serverAt(21, "localhost")).result, DownloadResult::NotConnected)
        << "not a dotted address";

    ScriptedFtpServer server(scriptWith("PASV", {"227 (127,0,0,1," + std::to_string(closedPort / 256) + "," +
                                                 std::to_string(closedPort % 256) + ")\r\n"}));
    const Download withoutData = download(serverAt(server.port()));
    EXPECT_EQ(withoutData.result, DownloadResult::TransferFailed);
    EXPECT_THAT(withoutData.reports, ElementsAre(Pair(10u, -1), Pair(2u, -1)));

    FtpScript script = scriptWith("RETR", {"150 coming\r\n"});
    for (const FtpScript::DataEnd end : {FtpScript::Resets, FtpScript::StaysSilent}) {
        script.dataEnd = end;
        server.setScript(script);
        const Download cut = download(serverAt(server.port()), {1000ms, std::nullopt, 1000ms});
        EXPECT_EQ(cut.result, DownloadResult::TransferFailed);
        EXPECT_FALSE(cut.hasBuffer);
        EXPECT_THAT(cut.reports, ElementsAre(Pair(2u, 100), Pair(2u, -1), Pair(2u, -1)));
    }
}

// A listener whose queue of callers is full: the next one is neither accepted nor refused.
class DeafListener {
public:
    DeafListener() : listener_(socket(AF_INET, SOCK_STREAM, IPPROTO_TCP)) {
        address_.sin_family = AF_INET;
        address_.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        int size = sizeof address_;
        auto *address = reinterpret_cast<sockaddr *>(&address_);
        bind(listener_.get(), address, size);
        listen(listener_.get(), 1);
        getsockname(listener_.get(), address, &size);
        for (UniqueSocket &caller : callers_) {
            caller.reset(socket(AF_INET, SOCK_STREAM, IPPROTO_TCP));
            u_long nonBlocking = 1;
            ioctlsocket(caller.get(), FIONBIO, &nonBlocking);
            connect(caller.get(), address, size);
        }
    }
    uint32_t port() const { return ntohs(address_.sin_port); }

private:
    SocketLibrary library_;
    sockaddr_in address_{};
    UniqueSocket listener_, callers_[4];
};

TEST(DownloadToMemory, EndsWhenItsTimeIsOver) {
    SocketLibrary library;
    library.start();
    const DeafListener deaf;
    const Download unheard = download(serverAt(deaf.port()), {300ms, std::nullopt, 300ms});
    EXPECT_EQ(unheard.result, DownloadResult::NotConnected);
    EXPECT_EQ(unheard.diagnostics, "连接失败: 10060 (连接超时)\n");

    // Each wait may take longer than the whole.
    ScriptedFtpServer server(scriptWith("SIZE", {"", FtpStep::StaysSilent}));
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(download(serverAt(server.port()), {20s, 1000ms, 20s}).result, DownloadResult::NoSize);
    EXPECT_LT(std::chrono::steady_clock::now() - start, 10s);
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
        const Download seen = download(serverAt(server.port()));
        EXPECT_EQ(seen.result, DownloadResult::Done) << row.announced;
        EXPECT_TRUE(seen.hasBuffer) << row.announced;
        EXPECT_TRUE(seen.bytes == row.kept) << row.announced;
        EXPECT_THAT(*(seen.reports.end() - 2), Pair(2u, row.lastPercent)) << row.announced;
    }
}

TEST(PassiveTransfers, ServersThatAnswerWhenTheyHaveTheDataConnection) {
    FtpScript script;
    script.acceptsFirst = true;
    script.files = {{"dir\\file", "0123456789"}, {"dir", "a listing"}};
    ScriptedFtpServer server(script);
    const TimeLimits limits{20s, std::nullopt, 50ms};
    const Download seen = download(serverAt(server.port()), limits);
    EXPECT_EQ(seen.result, DownloadResult::Done);
    EXPECT_EQ(seen.bytes, "0123456789");

    FtpSession session(limits);
    ASSERT_EQ(openSession(serverAt(server.port()), session), SessionResult::Open);
    EXPECT_EQ(uploadPassive(session, "to be kept", 10, "dir\\new", {}), TransferResult::Done);
    EXPECT_EQ(server.stored(), "to be kept");
    std::string listing;
    EXPECT_EQ(listPassive(session, "dir", listing), TransferResult::Done);
    EXPECT_EQ(listing, "a listing");
    EXPECT_EQ(closeSession(session), 1);
}

} // namespace
