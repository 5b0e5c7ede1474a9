// What the update does not use of the FTP client, against a real server, which with_ftp_server.sh starts.
// Downloads to memory are in FtpClientTest, and from this server in update_round_test.sh.

#include "update/FtpControl.h"
#include "update/FtpTransfers.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::HasSubstr;
namespace fs = std::filesystem;

namespace {

std::string read(const fs::path &path) {
    std::ifstream file(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(file), {});
}

TEST(RealServer, UploadsListsAndSendsInActiveMode) {
    const char *port = std::getenv("QOR_FTP_PORT"), *folder = std::getenv("QOR_FTP_ROOT");
    ASSERT_TRUE(port && folder) << "run this by with_ftp_server.sh";
    const fs::path root = fs::path("Z:") / folder;
    fs::create_directories(root / "kit");
    FtpServer server;
    server.address = "127.0.0.1";
    server.port = static_cast<uint32_t>(std::atoi(port));
    server.user = "maker";
    server.password = "secret";
    FtpSession session;
    ASSERT_EQ(openSession(server, session), 1);
    const SOCKET control = session.control.get();
    EXPECT_TRUE(setBinaryType(control));

    // More than the sockets' buffers hold: else the server may confirm an active transfer in the same segment
    // with which it announces it, and the client, which takes one receive as one reply, would wait for a
    // confirmation it has had.
    const std::string content(24000000, 'u');
    EXPECT_EQ(uploadPassive(session, content.data(), content.size(), "kit\\uploaded", {}), 1);
    EXPECT_TRUE(read(root / "kit" / "uploaded") == content);
    EXPECT_EQ(getFileSize(control, "kit\\uploaded"), 24000000);
    EXPECT_EQ(getFileTime(control, "kit\\uploaded").substr(0, 2), "20"); // the year
    std::string listing;
    EXPECT_EQ(listPassive(session, "kit", listing), 1);
    EXPECT_THAT(listing, HasSubstr(" uploaded\r\n"));

    testing::internal::CaptureStdout();
    EXPECT_TRUE(downloadActive(session, "kit\\uploaded", "active.tmp", 24000000));
    EXPECT_THAT(testing::internal::GetCapturedStdout(), HasSubstr("\r下载进度: 100%"));
    EXPECT_TRUE(read("active.tmp") == content);
    fs::remove("active.tmp");
    EXPECT_EQ(closeSession(session), 1);
}

} // namespace
