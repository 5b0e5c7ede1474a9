// What the tool refuses and finds. What goes well is in update_round_test.sh, whose packages it makes.
#include "release/ReleaseTool.h"

#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sstream>

namespace fs = std::filesystem;

TEST(ReleaseTool, NamesWhatIsWrong) {
    const fs::path folder = fs::temp_directory_path() / fs::u8path(u8"qor_release_test_中文"),
                   configuration = folder / "a.fsc", information = folder / "info.dat";
    fs::create_directories(folder);
    const auto write = [&](const char *name, const std::string &bytes) {
        std::ofstream(folder / name, std::ios::binary) << bytes;
        return folder / name;
    };
    std::ostringstream output; // and errors
    const auto run = [&](const std::vector<fs::path> &arguments) {
        return runReleaseTool(arguments, output, output);
    };
    const auto says = [&](const char *line) { EXPECT_THAT(output.str(), testing::HasSubstr(line)); };

    const std::pair<std::string, const char *> settings[] = {
        {"address = 1.2.3.4.5", "line 1: address \"1.2.3.4.5\" is not a dotted IPv4 address"},
        {"address = 1.2.3.4\nport = 65536", "line 2: \"65536\" is not a number from 1 to 65535"},
        {"address = 1.2.3.4\nserver = x", "line 2: unknown setting \"server\""},
        {"address = 1.2.3.4\n\nuser = " + std::string(33, 'u'), "line 3: user does not fit in 32 bytes"},
        {"address = 1.2.3.4\nkey = 0123456789abcdeg", "line 2: the key is not 16 hexadecimal digits"},
        {"address = 1.2.3.4\nuser", "line 2: expected name = value"},
        {"address = 1.2.3.4\naddress = 1.2.3.4", "line 2: \"address\" stands there a second time"},
        {"# address = 1.2.3.4\n", "there is no address"},
    };
    for (const auto &[text, message] : settings) {
        EXPECT_EQ(run({"netcfg", write("settings.txt", text), configuration}), 1) << text;
        says(message);
        EXPECT_FALSE(fs::exists(configuration)) << text;
    }

    const fs::path first = write("first.exe", "123456789"), other = write("other.exe", "b"),
                   good = write("settings.txt", "\xEF\xBB\xBF# a comment\naddress = 192.0.2.10\r\n\n"
                                                "password = with blank = # and equals\n");
    EXPECT_EQ(run({"updateinfo", information, first}), 0);
    EXPECT_EQ(run({"netcfg", good, configuration}), 0);
    EXPECT_EQ(run({"check", configuration, information, first, other}), 1);
    EXPECT_EQ(run({"check", configuration, write("upper.dat", "\nsetup.exe:crc=0x0000000A")}), 1);
    EXPECT_EQ(run({"check", write("a.fsc", std::string(344, 'x')), information}), 1);
    for (const char *line :
         {"server 192.0.2.10:21, user \"\", with password, folder \"\"", "first.exe is listed",
          "other.exe is NOT listed", "line 2: not eight lower-case", "is damaged (CRC)"})
        says(line);
    fs::remove_all(folder);
}
