// The FTP client against a real server, which with_ftp_server.sh starts.

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

std::string binaryContent(size_t size) {
    std::string content(size, '\0');
    uint32_t state = 1;
    for (char &byte : content)
        byte = static_cast<char>((state = state * 1664525u + 1013904223u) >> 24);
    return content;
}

class RealServer : public testing::Test {
protected:
    fs::path root_;
    FtpServer server_;
    FtpSession session_;

    void SetUp() override {
        const char *port = std::getenv("QOR_FTP_PORT"), *root = std::getenv("QOR_FTP_ROOT");
        ASSERT_TRUE(port && root) << "run this by with_ftp_server.sh";
        root_ = fs::path("Z:") / root;
        server_.address = "127.0.0.1";
        server_.port = static_cast<uint32_t>(std::atoi(port));
        server_.user = "maker";
        server_.password = "secret";
        fs::create_directories(root_ / "kit");
    }
    void TearDown() override {
        if (session_.control)
            closeSession(session_);
    }

    void write(const char *name, const std::string &bytes) {
        std::ofstream(root_ / name, std::ios::binary) << bytes;
    }
    std::string read(const fs::path &path) {
        std::ifstream file(path, std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(file), {});
    }
};

TEST_F(RealServer, DownloadsToMemory) {
    for (size_t size : {0u, 1u, 65536u, 5000001u}) {
        const std::string content = binaryContent(size);
        write("kit/setup.exe", content);
        DownloadBuffer buffer;
        int64_t announced = -1;
        int32_t last = 0;
        const auto keepLast = [](uint32_t stage, int32_t value, uintptr_t context) {
            *reinterpret_cast<int32_t *>(context) = stage == FtpTransfer ? value : -2;
        };
        ASSERT_EQ(downloadToMemory(server_, "kit\\setup.exe", buffer, &announced,
                                   {keepLast, reinterpret_cast<uintptr_t>(&last)}),
                  1);
        EXPECT_EQ(announced, static_cast<int64_t>(size));
        EXPECT_TRUE(std::string(reinterpret_cast<const char *>(buffer.data()), buffer.size()) == content)
            << size;
        EXPECT_EQ(last, 100);
    }
}

TEST_F(RealServer, RefusesStrangersAndMissingFiles) {
    DownloadBuffer buffer;
    EXPECT_EQ(downloadToMemory(server_, "kit\\none", buffer, nullptr, {}), -6);
    server_.password = "wrong";
    EXPECT_EQ(downloadToMemory(server_, "kit\\setup.exe", buffer, nullptr, {}), -5);
}

TEST_F(RealServer, TellsSizeAndTime) {
    write("kit/info", "12345");
    ASSERT_EQ(openSession(server_, session_), 1);
    const SOCKET control = session_.control.get();
    EXPECT_EQ(getFileSize(control, "kit\\info"), 5);
    EXPECT_TRUE(setBinaryType(control));
    const std::string time = getFileTime(control, "kit\\info");
    SYSTEMTIME now;
    GetSystemTime(&now);
    char today[16];
    std::snprintf(today, sizeof today, "%04d-%02d-%02d ", now.wYear, now.wMonth, now.wDay);
    EXPECT_EQ(time.size(), 19u);
    EXPECT_EQ(time.substr(0, 11), today) << time << " (wrong only if the test ran over midnight)";
}

TEST_F(RealServer, DownloadsInActiveMode) {
    // More than the sockets' buffers hold: else the server may confirm the transfer in the same segment with
    // which it announces it, and the client, which takes one receive as one reply, would wait for a
    // confirmation it has had.
    const std::string content = binaryContent(24000000);
    write("kit/active", content);
    ASSERT_EQ(openSession(server_, session_), 1);
    ASSERT_TRUE(setBinaryType(session_.control.get()));
    EXPECT_TRUE(downloadActive(session_, "kit\\active", "active.tmp", 24000000));
    EXPECT_TRUE(read("active.tmp") == content);
    fs::remove("active.tmp");
}

TEST_F(RealServer, UploadsAndLists) {
    const std::string content = binaryContent(200000);
    ASSERT_EQ(openSession(server_, session_), 1);
    ASSERT_TRUE(setBinaryType(session_.control.get()));
    EXPECT_EQ(uploadPassive(session_, content.data(), content.size(), "kit\\uploaded", {}), 1);
    EXPECT_TRUE(read(root_ / "kit" / "uploaded") == content);
    std::string listing;
    EXPECT_EQ(listPassive(session_, "kit", listing), 1);
    EXPECT_THAT(listing, HasSubstr(" uploaded\r\n"));
    EXPECT_EQ(listPassive(session_, "", listing), 1);
    EXPECT_THAT(listing, HasSubstr(" kit\r\n"));
}

} // namespace
