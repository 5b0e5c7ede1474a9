#include "helpers/LogHelper.h"
#include "helpers/ProductSettings.h"
#include "helpers/Registry.h"

#include <fstream>
#include <gtest/gtest.h>
#include <regex>
#include <set>
#include <thread>
#include <vector>

namespace {

class LogHelperTest : public testing::Test {
protected:
    void SetUp() override {
        RegDeleteTreeW(HKEY_LOCAL_MACHINE, L"SOFTWARE\\QorSoundKit");
        Registry::CreateKey(ProductSettings::kProductKey);
        DeleteFileW(LogFilePath().c_str());
        LogReset();
    }

    static std::vector<std::string> lines() {
        const std::wstring path = LogFilePath();
        std::ifstream file(std::string(path.begin(), path.end()), std::ios::binary);
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

TEST_F(LogHelperTest, TraceAndItsLevelsAreSwitchedOnByTheExactTextOnly) {
    Registry::WriteDwordValue(ProductSettings::kProductKey, L"level_low", static_cast<uint32_t>(-2));
    Registry::WriteDwordValue(ProductSettings::kProductKey, L"level_hi", 3);
    for (const wchar_t *text : {L"True", L"true ", L"1", L"", L"true"}) {
        LogReset();
        Registry::WriteStringValue(ProductSettings::kProductKey, L"EnableTrace", text);
        LogWrite("f", 1, "g", true, L"traced");
        const bool on = std::wstring(text) == L"true";
        ASSERT_EQ(on ? 1u : 0u, lines().size());
        for (const int level : {-3, -2, 0, 3, 4})
            EXPECT_EQ(on ? level >= -2 && level <= 3 : level == 0, LogLevelEnabled(level)) << level;
    }
    EXPECT_NE(std::string::npos, lines()[0].find("g (f:1): (TRACE) traced"));
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
    std::set<std::string> marks;
    for (const std::string &line : lines())
        marks.insert(line.substr(line.find(" g (f:1): <")));
    EXPECT_EQ(400u, marks.size());
    EXPECT_EQ(400u, lines().size());
}

TEST_F(LogHelperTest, WholeFilesAreReadAsText) {
    const wchar_t *path = L"C:\\windows\\temp\\whole.bin";
    const char bytes[] = {'a', '\r', '\n', 'b', '\x1A', 'c'};
    EXPECT_EQ(0, WriteFileBytes(path, bytes, sizeof bytes));
    std::string back(8, '.');
    ReadFileBytes(path, back.data(), back.size()); // CR LF shrinks, 0x1A ends
    EXPECT_EQ("a\nb.....", back);
    ReadFileBytes(L"C:\\windows\\temp\\missing.bin", back.data(), back.size());
    EXPECT_EQ("a\nb.....", back);
    EXPECT_NE(0, WriteFileBytes(L"C:\\no such folder\\x", bytes, sizeof bytes));
}

TEST_F(LogHelperTest, SettingsOfTheWrongTypeCountAsMissing) {
    Registry::WriteStringValue(ProductSettings::kProductKey, L"exitCmd", L"1");
    Registry::WriteDwordValue(ProductSettings::kProductKey, L"DisplayName", 5);
    for (int i = 0; i < 3; ++i)
        EXPECT_FALSE(ProductSettings::readDword(L"exitCmd").has_value());
    EXPECT_EQ(L"QorSound Kit", ProductSettings::productDisplayName());
    EXPECT_EQ(2u, lines().size()); // each told once
    Registry::DeleteKey(ProductSettings::kProductKey);
    EXPECT_FALSE(ProductSettings::readDword(L"isStartShow").has_value());
    EXPECT_FALSE(ProductSettings::writeDword(L"isStartShow", 1));
}

} // namespace
