#include "release/ReleaseTool.h"

#include "update/ServerConfig.h"

#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sstream>

using testing::HasSubstr;
namespace fs = std::filesystem;

namespace {

class ReleaseTool : public testing::Test {
protected:
    fs::path folder_ = fs::temp_directory_path() / fs::u8path(u8"qor_release_test_中文");
    std::string output_, errors_;

    void SetUp() override { fs::create_directories(folder_); }
    void TearDown() override { fs::remove_all(folder_); }

    fs::path write(const char *name, const std::string &bytes) {
        std::ofstream(folder_ / name, std::ios::binary) << bytes;
        return folder_ / name;
    }
    std::string read(const char *name) const {
        std::ifstream file(folder_ / name, std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(file), {});
    }
    int run(const std::vector<fs::path> &arguments) {
        std::ostringstream out, errors;
        const int code = runReleaseTool(arguments, out, errors);
        output_ = out.str();
        errors_ = errors.str();
        return code;
    }
};

constexpr char kSettings[] = "# the update server\n"
                             "address = 192.0.2.10\r\n"
                             "port=2121\n"
                             "user = updates\n"
                             "password = with blank = and equals\n"
                             "\n"
                             "folder = headset\\v2\n"
                             "reserved = 4294967295\n";

TEST_F(ReleaseTool, ConfigurationIsReadByThePanel) {
    const fs::path settings = write("settings.txt", kSettings);
    for (const char *name : {"a.fsc", "b.fsc"})
        ASSERT_EQ(run({"netcfg", settings, folder_ / name}), 0) << errors_;
    EXPECT_NE(read("a.fsc"), read("b.fsc")); // keys are random unless named
    ServerConfigRecord record;
    ASSERT_EQ(loadServerConfig(folder_ / "a.fsc", record), 1);
    const ServerConfig config = getServerConfig(record);
    EXPECT_EQ(config.server.address, "192.0.2.10");
    EXPECT_EQ(config.server.port, 2121u);
    EXPECT_EQ(config.server.user, "updates");
    EXPECT_EQ(config.server.password, "with blank = and equals");
    EXPECT_EQ(config.folder, "headset\\v2");
    EXPECT_EQ(config.reserved, 4294967295u);

    const fs::path keyed = write("keyed.txt", std::string(kSettings) + "key = 00112233aaBBccFF\n");
    ASSERT_EQ(run({"netcfg", keyed, folder_ / "c.fsc"}), 0) << errors_;
    EXPECT_EQ(read("c.fsc").substr(0, 8), std::string("\x00\x11\x22\x33\xAA\xBB\xCC\xFF", 8));
}

TEST_F(ReleaseTool, WrongSettingsAreNamed) {
    const std::string address = "address = 1.2.3.4\n";
    const struct {
        std::string text, message;
    } rows[] = {
        {"", "no address"},
        {"address = host.example", "not a dotted IPv4 address"},
        {"address = 1.2.3.256", "not a dotted IPv4 address"},
        {"address = 1.2.3.4.5", "not a dotted IPv4 address"},
        {"address = 1.2.3", "not a dotted IPv4 address"},
        {address + "port = 65536", "line 2: \"65536\" is not a number from 0 to 65535"},
        {address + "port = 21x", "line 2"},
        {address + "server = x", "line 2: unknown setting \"server\""},
        {"just text", "line 1: expected name = value"},
        {address + "key = 00112233aabbccxx", "16 hexadecimal digits"},
        {address + "user = " + std::string(33, 'u'), "user does not fit in 32 bytes"},
        {address + "password = " + std::string(33, 'p'), "password does not fit in 32 bytes"},
        {address + "folder = " + std::string(257, 'f'), "folder does not fit in 256 bytes"},
        {address + "folder = a" + '\0', "folder does not fit in 256 bytes"},
    };
    for (const auto &row : rows) {
        EXPECT_EQ(run({"netcfg", write("settings.txt", row.text), folder_ / "a.fsc"}), 1) << row.text;
        EXPECT_THAT(errors_, HasSubstr(row.message));
        EXPECT_FALSE(fs::exists(folder_ / "a.fsc")) << row.text;
    }
}

TEST_F(ReleaseTool, InformationListsTheInstallers) {
    // The register is the complement of the published check value 0xCBF43926.
    const fs::path first = write("first.exe", "123456789"), second = write("second.exe", "a");
    ASSERT_EQ(run({"updateinfo", folder_ / "info.dat", first, second}), 0) << errors_;
    EXPECT_EQ(read("info.dat"), "setup.exe:crc=0x340bc6d9\r\nsetup.exe:crc=0x174841bc\r\n");

    ASSERT_EQ(run({"netcfg", write("settings.txt", kSettings), folder_ / "a.fsc"}), 0);
    EXPECT_EQ(run({"check", folder_ / "a.fsc", folder_ / "info.dat", first, second}), 0) << errors_;
    EXPECT_THAT(output_, HasSubstr("192.0.2.10:2121"));
    EXPECT_THAT(output_, HasSubstr("2 installers are listed"));
    EXPECT_THAT(output_,
                testing::Not(HasSubstr("with blank = and equals"))); // the password stays out of logs

    EXPECT_EQ(run({"check", folder_ / "a.fsc", folder_ / "info.dat", write("third.exe", "b")}), 1);
    EXPECT_THAT(output_, HasSubstr("third.exe is NOT listed"));
    EXPECT_EQ(run({"updateinfo", folder_ / "other.dat", first, folder_ / "missing.exe"}), 1);
    EXPECT_FALSE(fs::exists(folder_ / "other.dat"));
}

TEST_F(ReleaseTool, CheckFindsWrongFiles) {
    ASSERT_EQ(run({"netcfg", write("settings.txt", kSettings), folder_ / "good.fsc"}), 0);
    std::string damaged = read("good.fsc");
    damaged[50] = static_cast<char>(damaged[50] ^ 4);
    const fs::path good = folder_ / "good.fsc", entry = write("good.dat", "setup.exe:crc=0x00000001");
    const struct {
        fs::path configuration, information;
        const char *message;
    } rows[] = {
        {folder_ / "none.fsc", entry, "is missing"},
        {write("damaged.fsc", damaged), entry, "damaged"},
        {write("short.fsc", damaged.substr(1)), entry, "has not 344 bytes"},
        {good, folder_ / "none.dat", "cannot read"},
        {good, write("empty.dat", ""), "lists no installer"},
        {good, write("upper.dat", "setup.exe:crc=0x0000000A"), "lower-case"},
        {good, write("cut.dat", "setup.exe:crc=0x0000"), "lower-case"},
        {good, write("zero.dat", std::string("setup.exe:crc=0x00000001\0", 25)), "NUL"},
    };
    for (const auto &row : rows) {
        EXPECT_EQ(run({"check", row.configuration, row.information}), 1) << row.message;
        EXPECT_THAT(errors_, HasSubstr(row.message));
    }
    EXPECT_EQ(run({"check", good, entry}), 0);
}

TEST_F(ReleaseTool, CommandLine) {
    EXPECT_EQ(run({"--help"}), 0);
    for (const char *command : {"netcfg", "updateinfo", "check"})
        EXPECT_THAT(output_, HasSubstr(std::string("qor_release ") + command));
    for (const std::vector<fs::path> &arguments :
         {std::vector<fs::path>{}, {"unknown"}, {"netcfg", "a"}, {"updateinfo", "a"}, {"check", "a"}}) {
        EXPECT_EQ(run(arguments), 2);
        EXPECT_THAT(errors_, HasSubstr("--help"));
    }
}

} // namespace
