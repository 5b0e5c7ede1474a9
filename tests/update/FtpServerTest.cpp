// The FTP client against a real server, which with_ftp_server.sh starts.

#include "update/FtpControl.h"
#include "update/FtpTransfers.h"

#include <algorithm>
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

std::string read(const fs::path &path) {
    std::ifstream file(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(file), {});
}

class RealServer : public testing::Test {
protected:
    fs::path kit_; // the served folder's subfolder "kit"
    FtpServer server_;
    FtpSession session_;

    void SetUp() override {
        const char *port = std::getenv("QOR_FTP_PORT"), *root = std::getenv("QOR_FTP_ROOT");
        ASSERT_TRUE(port && root) << "run this by with_ftp_server.sh";
        kit_ = fs::path("Z:") / root / "kit";
        fs::create_directories(kit_);
        server_.address = "127.0.0.1";
        server_.port = static_cast<uint32_t>(std::atoi(port));
        server_.user = "maker";
        server_.password = "secret";
    }
    void TearDown() override {
        if (session_.control) {
            EXPECT_EQ(closeSession(session_), 1);
        }
    }
    void write(const char *name, const std::string &bytes) {
        std::ofstream(kit_ / name, std::ios::binary) << bytes;
    }
    void open() {
        ASSERT_EQ(openSession(server_, session_), 1);
        EXPECT_EQ(session_.localAddress, "127.0.0.1");
        EXPECT_TRUE(setBinaryType(session_.control.get()));
    }
};

TEST_F(RealServer, DownloadsToMemory) {
    for (size_t size : {0u, 1u, 65536u, 5000001u}) {
        const std::string content = binaryContent(size);
        write("setup.exe", content);
        DownloadBuffer buffer;
        std::vector<int32_t> reports;
        const auto keep = [](uint32_t stage, int32_t value, uintptr_t context) {
            reinterpret_cast<std::vector<int32_t> *>(context)->push_back(stage == FtpTransfer ? value : -2);
        };
        int64_t announced = -1;
        ASSERT_EQ(downloadToMemory(server_, "kit\\setup.exe", buffer, &announced,
                                   {keep, reinterpret_cast<uintptr_t>(&reports)}),
                  1);
        EXPECT_EQ(announced, static_cast<int64_t>(size));
        EXPECT_TRUE(std::string(reinterpret_cast<const char *>(buffer.data()), buffer.size()) == content)
            << size;
        EXPECT_TRUE(std::is_sorted(reports.begin(), reports.end()));
        EXPECT_EQ(reports.back(), 100);
        EXPECT_GT(reports.size(), size / 65536); // no chunk is larger
    }
}

TEST_F(RealServer, RefusesStrangersAndMissingFiles) {
    DownloadBuffer buffer;
    EXPECT_EQ(downloadToMemory(server_, "kit\\none", buffer, nullptr, {}), -6);
    server_.password = "wrong";
    EXPECT_EQ(downloadToMemory(server_, "kit\\setup.exe", buffer, nullptr, {}), -5);
}

TEST_F(RealServer, TellsSizeAndTime) {
    write("info", "12345");
    open();
    EXPECT_EQ(getFileSize(session_.control.get(), "kit\\info"), 5);
    const std::string time = getFileTime(session_.control.get(), "kit\\info");
    SYSTEMTIME now;
    GetSystemTime(&now);
    char today[16];
    std::snprintf(today, sizeof today, "%04d-%02d-%02d ", now.wYear, now.wMonth, now.wDay);
    EXPECT_EQ(time.substr(0, 11), today) << time << " (wrong only if the test ran over midnight)";
    testing::internal::CaptureStderr();
    EXPECT_EQ(getFileTime(session_.control.get(), "kit\\none"), "");
    EXPECT_THAT(testing::internal::GetCapturedStderr(), HasSubstr("获取文件修改时间失败: 550"));
}

TEST_F(RealServer, DownloadsInActiveMode) {
    // More than the sockets' buffers hold: else the server may confirm the transfer in the same segment with
    // which it announces it, and the client, which takes one receive as one reply, would wait for a
    // confirmation it has had.
    const std::string content = binaryContent(24000000);
    write("active", content);
    open();
    testing::internal::CaptureStdout();
    EXPECT_TRUE(downloadActive(session_, "kit\\active", "active.tmp", 24000000));
    const std::string output = testing::internal::GetCapturedStdout();
    EXPECT_THAT(output, HasSubstr("数据连接将使用端口: "));
    EXPECT_THAT(output, HasSubstr("开始下载文件..."));
    EXPECT_THAT(output, HasSubstr("\r下载进度: 100%"));
    EXPECT_TRUE(read("active.tmp") == content);
    fs::remove("active.tmp");
}

TEST_F(RealServer, UploadsAndLists) {
    const std::string content = binaryContent(200000);
    open();
    EXPECT_EQ(uploadPassive(session_, content.data(), content.size(), "kit\\uploaded", {}), 1);
    EXPECT_TRUE(read(kit_ / "uploaded") == content);
    std::string listing;
    EXPECT_EQ(listPassive(session_, "kit", listing), 1);
    EXPECT_THAT(listing, HasSubstr(" uploaded\r\n"));
    EXPECT_EQ(listPassive(session_, "", listing), 1);
    EXPECT_THAT(listing, HasSubstr(" kit\r\n"));
}

} // namespace
