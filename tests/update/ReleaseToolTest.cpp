#include "release/ReleaseTool.h"

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

// What goes well is in update_round_test.sh, whose packages this tool makes.
TEST_F(ReleaseTool, WrongSettingsAreNamed) {
    const std::pair<std::string, std::string> rows[] = {
        {"address = 1.2.3.4.5", "line 1: address \"1.2.3.4.5\" is not a dotted IPv4 address"},
        {"address = 1.2.3.4\nport = 65536", "line 2: \"65536\" is not a number from 1 to 65535"},
        {"address = 1.2.3.4\nport = 0", "line 2: \"0\" is not a number"},
        {"address = 1.2.3.4\nserver = x", "line 2: unknown setting \"server\""},
        {"address = 1.2.3.4\n\nuser = " + std::string(33, 'u'), "line 3: user does not fit in 32 bytes"},
        {"address = 1.2.3.4\nkey = 0123456789abcdeg", "line 2: the key is not 16 hexadecimal digits"},
        {"address = 1.2.3.4\nuser", "line 2: expected name = value"},
        {"address = 1.2.3.4\naddress = 1.2.3.4", "line 2: \"address\" stands there a second time"},
        {"# address = 1.2.3.4\n", "there is no address"},
    };
    for (const auto &[text, message] : rows) {
        EXPECT_EQ(run({"netcfg", write("settings.txt", text), folder_ / "a.fsc"}), 1) << text;
        EXPECT_THAT(errors_, HasSubstr(message));
        EXPECT_FALSE(fs::exists(folder_ / "a.fsc")) << text;
    }
}

TEST_F(ReleaseTool, CheckFindsWhatThePanelWouldNotTake) {
    const fs::path first = write("first.exe", "123456789"), second = write("second.exe", "a");
    const fs::path configuration = folder_ / "a.fsc", information = folder_ / "info.dat";
    EXPECT_EQ(run({"updateinfo", information, first, folder_ / "missing.exe"}), 1);
    EXPECT_FALSE(fs::exists(information));
    ASSERT_EQ(run({"updateinfo", information, first, second}), 0) << errors_;
    const fs::path settings = write("settings.txt", "\xEF\xBB\xBF# a comment\n"
                                                    "address = 192.0.2.10\r\n\n"
                                                    "port=2121\n"
                                                    "password = with blank = # and equals\n"
                                                    "reserved = 4294967295\n");
    ASSERT_EQ(run({"netcfg", settings, configuration}), 0) << errors_;
    EXPECT_EQ(run({"check", configuration, information, first, second}), 0) << errors_;
    EXPECT_THAT(output_, HasSubstr("server 192.0.2.10:2121, user \"\", with password, folder \"\", "
                                   "reserved 4294967295\n2 installers are listed"));
    EXPECT_EQ(run({"check", configuration, information, write("third.exe", "b")}), 1);
    EXPECT_THAT(output_, HasSubstr("third.exe is NOT listed"));
    EXPECT_EQ(run({"check", configuration, write("upper.dat", "\nsetup.exe:crc=0x0000000A")}), 1);
    EXPECT_THAT(errors_, HasSubstr("line 2: not eight lower-case"));
    write("a.fsc", read("a.fsc").replace(50, 7, "damaged"));
    EXPECT_EQ(run({"check", configuration, information}), 1);
    EXPECT_THAT(errors_, HasSubstr("is damaged (CRC)"));
}

} // namespace
