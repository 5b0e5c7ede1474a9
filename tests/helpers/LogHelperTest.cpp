#include "helpers/LogHelper.h"
#include "helpers/ProductSettings.h"
#include "helpers/Registry.h"

#include <cstring>
#include <fstream>
#include <gtest/gtest.h>
#include <regex>
#include <sstream>
#include <thread>
#include <vector>

namespace {

std::string narrow(const std::wstring &text) {
    return std::string(text.begin(), text.end());
}

class LogHelperTest : public testing::Test {
protected:
    void SetUp() override {
        RegDeleteTreeW(HKEY_LOCAL_MACHINE, L"SOFTWARE\\QorSoundKit");
        Registry::CreateKey(ProductSettings::kProductKey);
        DeleteFileW(LogFilePath().c_str());
        LogConfigure(nullptr, false, false, false);
        LogReset();
    }
    void TearDown() override { LogConfigure(nullptr, false, false, false); }

    static bool exists() { return GetFileAttributesW(LogFilePath().c_str()) != INVALID_FILE_ATTRIBUTES; }

    static std::vector<std::string> lines() {
        std::ifstream file(narrow(LogFilePath()), std::ios::binary);
        std::vector<std::string> result;
        for (std::string line; std::getline(file, line);)
            result.push_back(line);
        return result;
    }
};

TEST_F(LogHelperTest, LineLayout) {
    LogWrite("helpers/Some.cpp", 42, "some", false, L"%s and %S: %d", L"音量", "narrow", -7);
    const std::vector<std::string> all = lines();
    ASSERT_EQ(1u, all.size());
    const std::string ids = std::to_string(GetCurrentProcessId()) + R"( \d\d:\d\d:\d\d\.\d\d\d )" +
                            std::to_string(GetCurrentThreadId());
    const std::regex layout("^" + ids + R"( some \(helpers/Some\.cpp:42\): 音量 and narrow: -7\r$)");
    EXPECT_TRUE(std::regex_match(all[0], layout)) << all[0];
}

TEST_F(LogHelperTest, TraceIsSwitchedOnByTheExactTextOnly) {
    const struct {
        const wchar_t *text;
        bool enabled;
    } cases[] = {{L"true", true}, {L"True", false}, {L"true ", false}, {L"1", false}, {L"", false}};
    for (const auto &c : cases) {
        LogReset();
        DeleteFileW(LogFilePath().c_str());
        Registry::WriteStringValue(ProductSettings::kProductKey, L"EnableTrace", c.text);
        LogWrite("f", 1, "g", true, L"traced");
        ASSERT_EQ(c.enabled, exists()) << narrow(c.text);
        if (c.enabled) {
            EXPECT_NE(std::string::npos, lines().at(0).find("g (f:1): (TRACE) traced"));
        }
    }
}

TEST_F(LogHelperTest, LevelWindow) {
    EXPECT_TRUE(LogLevelEnabled(0));
    EXPECT_FALSE(LogLevelEnabled(1));
    Registry::WriteStringValue(ProductSettings::kProductKey, L"EnableTrace", L"true");
    Registry::WriteDwordValue(ProductSettings::kProductKey, L"level_low", static_cast<uint32_t>(-2));
    Registry::WriteDwordValue(ProductSettings::kProductKey, L"level_hi", 3);
    LogWrite("f", 1, "g", true, L"reads the settings");
    for (const auto &[level, enabled] : {std::pair{-3, false}, {-2, true}, {0, true}, {3, true}, {4, false}})
        EXPECT_EQ(enabled, LogLevelEnabled(level)) << level;
    Registry::DeleteValue(ProductSettings::kProductKey, L"EnableTrace");
    LogReset();
    LogWrite("f", 1, "g", false, L"reads the settings again");
    EXPECT_FALSE(LogLevelEnabled(3)); // the window is read with tracing on only
}

TEST_F(LogHelperTest, MissingProductKeyIsItselfLogged) {
    Registry::DeleteKey(ProductSettings::kProductKey);
    LogWrite("f", 1, "g", false, L"line");
    const std::vector<std::string> all = lines();
    ASSERT_EQ(2u, all.size());
    EXPECT_NE(std::string::npos, all[0].find(" log (helpers/LogHelper:69): Error while opening registry key "
                                             "HKEY_LOCAL_MACHINE\\SOFTWARE\\QorSoundKit: "))
        << all[0];
    EXPECT_NE(std::string::npos, all[1].find("g (f:1): line"));
}

TEST_F(LogHelperTest, StreamsOfAHost) {
    FILE *stream = _wfopen(L"C:\\windows\\temp\\host.txt", L"w+b");
    ASSERT_TRUE(stream);
    LogConfigure(stream, true, true, true);
    LogWrite("f", 1, "g", true, L"a");
    LogWrite("f", 1, "g", false, L"b");
    std::rewind(stream);
    char text[64] = {};
    std::fread(text, 1, sizeof text - 1, stream);
    EXPECT_STREQ("(TRACE) a\nb\n", text);
    EXPECT_FALSE(exists());
    LogConfigure(nullptr, false, false, false);
    std::fclose(stream);
}

TEST_F(LogHelperTest, UnwritableLogIsSkipped) {
    ASSERT_TRUE(CreateDirectoryW(LogFilePath().c_str(), nullptr)); // a folder stands where the file should be
    LogWrite("f", 1, "g", false, L"lost");
    EXPECT_TRUE(RemoveDirectoryW(LogFilePath().c_str()));
}

TEST_F(LogHelperTest, NoLineOfAnyThreadIsLost) {
    std::vector<std::thread> threads;
    for (int t = 0; t < 4; ++t) {
        threads.emplace_back([t] {
            for (int i = 0; i < 100; ++i)
                LogWrite("f", 1, "g", false, L"<%d.%d>", t, i);
        });
    }
    for (std::thread &thread : threads)
        thread.join();
    std::ostringstream all;
    const std::vector<std::string> written = lines();
    for (const std::string &line : written)
        all << line;
    EXPECT_EQ(400u, written.size());
    const std::string text = all.str();
    for (int t = 0; t < 4; ++t)
        for (int i = 0; i < 100; ++i) {
            const std::string mark = "<" + std::to_string(t) + "." + std::to_string(i) + ">";
            ASSERT_NE(std::string::npos, text.find(mark)) << mark;
        }
}

TEST_F(LogHelperTest, WholeFiles) {
    const wchar_t *path = L"C:\\windows\\temp\\whole.bin";
    const char bytes[] = "a\r\nb\x1A"
                         "c";
    EXPECT_EQ(0, WriteFileBytes(path, bytes, 6));
    char back[8];
    std::memset(back, '.', sizeof back);
    ReadFileBytes(path, back, sizeof back); // text mode: CR LF shrinks, 0x1A ends
    EXPECT_EQ(std::string("a\nb....."), std::string(back, 8));
    ReadFileBytes(L"C:\\windows\\temp\\missing.bin", back, sizeof back);
    EXPECT_EQ(std::string("a\nb....."), std::string(back, 8));
    EXPECT_NE(0, WriteFileBytes(L"C:\\no such folder\\x", bytes, 6));
    LogWriteTo(path, L"%s", L"文");
    std::memset(back, '.', sizeof back);
    ReadFileBytes(path, back, sizeof back);
    EXPECT_EQ(std::string("文....."), std::string(back, 8));
}

TEST_F(LogHelperTest, SettingsOfTheWrongTypeCountAsMissing) {
    Registry::WriteStringValue(ProductSettings::kProductKey, L"exitCmd", L"1");
    Registry::WriteDwordValue(ProductSettings::kProductKey, L"DisplayName", 5);
    for (int i = 0; i < 3; ++i)
        EXPECT_FALSE(ProductSettings::readDword(L"exitCmd").has_value());
    EXPECT_EQ(L"QorSound Kit", ProductSettings::productDisplayName());
    EXPECT_EQ(2u, lines().size()); // each told once
    Registry::WriteStringValue(ProductSettings::kProductKey, L"DisplayName", L"Kit");
    EXPECT_EQ(L"Kit", ProductSettings::productDisplayName());
    Registry::DeleteKey(ProductSettings::kProductKey);
    EXPECT_FALSE(ProductSettings::readDword(L"isStartShow").has_value());
    EXPECT_FALSE(ProductSettings::writeDword(L"isStartShow", 1));
}

} // namespace
