#include "helpers/LogHelper.h"
#include "helpers/ProductSettings.h"
#include "helpers/Registry.h"
#include "helpers/UniqueFile.h"
#include "helpers/WinHandles.h"

#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <regex>
#include <sstream>
#include <thread>
#include <vector>

namespace {

using ProductSettings::kProductKey;
using testing::AllOf;
using testing::Each;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::SizeIs;

class LogHelperTest : public testing::Test {
protected:
    LogHelperTest() {
        RegDeleteTreeW(HKEY_LOCAL_MACHINE, L"SOFTWARE\\QorSoundKit");
        Registry::CreateKey(kProductKey);
        forget();
    }

    // As at the start of a process, without a log file.
    static void forget() {
        std::filesystem::remove(LogFilePath());
        LogConfigure(nullptr, false, false, false);
        LogReset();
    }

    static std::vector<std::string> lines() {
        std::ifstream file(std::filesystem::path(LogFilePath()), std::ios::binary);
        std::vector<std::string> result;
        for (std::string line; std::getline(file, line);)
            result.push_back(line);
        return result;
    }
};

TEST_F(LogHelperTest, LineLayout) {
    LogWrite("helpers/Some.cpp", 42, "some", false, L"%s and %S: %d", L"音量", "narrow", -7);
    ASSERT_THAT(lines(), SizeIs(1));
    const std::string ids = std::to_string(GetCurrentProcessId()) + R"( \d\d:\d\d:\d\d\.\d\d\d )" +
                            std::to_string(GetCurrentThreadId());
    EXPECT_TRUE(std::regex_match(
        lines()[0], std::regex(ids + R"( some \(helpers/Some\.cpp:42\): 音量 and narrow: -7\r)")))
        << lines()[0];
}

TEST_F(LogHelperTest, TraceIsSwitchedOnByTheExactTextOnlyAndReadsItsLevels) {
    Registry::WriteDwordValue(kProductKey, L"level_low", static_cast<uint32_t>(-2));
    Registry::WriteDwordValue(kProductKey, L"level_hi", 3);
    for (const std::wstring text : {L"True", L"true ", L"1", L"", L"true"}) {
        SCOPED_TRACE(std::filesystem::path(text).string());
        forget();
        Registry::WriteStringValue(kProductKey, L"EnableTrace", text);
        LogWrite("f", 1, "g", true, L"traced");
        const bool on = text == L"true";
        EXPECT_EQ(on, std::filesystem::exists(LogFilePath()));
        if (on) {
            EXPECT_THAT(lines(), ElementsAre(EndsWith("g (f:1): (TRACE) traced\r")));
        }
        std::string levels;
        for (const int level : {-3, -2, 0, 3, 4})
            levels += LogLevelEnabled(level) ? '1' : '0';
        EXPECT_EQ(on ? "01110" : "00100", levels);
    }
}

TEST_F(LogHelperTest, MissingProductKeyIsItselfLogged) {
    Registry::DeleteKey(kProductKey);
    LogWrite("f", 1, "g", false, L"line");
    EXPECT_THAT(lines(),
                ElementsAre(HasSubstr(" log (helpers/LogHelper:69): Error while opening registry key "
                                      "HKEY_LOCAL_MACHINE\\SOFTWARE\\QorSoundKit: "),
                            EndsWith("g (f:1): line\r")));
}

TEST_F(LogHelperTest, WaitsForNoOtherProgram) {
    const auto hold = [](DWORD share) {
        return UniqueFileHandle(CreateFileW(LogFilePath().c_str(), GENERIC_READ | GENERIC_WRITE, share,
                                            nullptr, OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
    };
    {
        const UniqueFileHandle alone = hold(0);
        const DWORD start = GetTickCount();
        for (int i = 0; i < 50; ++i)
            LogWrite("f", 1, "g", false, L"lost");
        EXPECT_LT(GetTickCount() - start, 2000u);
    }
    const UniqueFileHandle shared = hold(FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE);
    LogWrite("f", 1, "g", false, L"written");
    EXPECT_THAT(lines(), ElementsAre(EndsWith("g (f:1): written\r")));
}

TEST_F(LogHelperTest, PersistentStreamTakesEverythingAndStaysOpen) {
    const std::filesystem::path file = L"C:\\windows\\temp\\stream.txt";
    const UniqueFile stream(_wfopen(file.c_str(), L"wb"));
    LogConfigure(stream.get(), true, true, false);
    LogWrite("f", 1, "g", true, L"traced");
    LogWrite("f", 1, "g", false, L"line");
    const auto written = [&] {
        std::ostringstream text;
        text << std::ifstream(file, std::ios::binary).rdbuf();
        return text.str();
    };
    EXPECT_EQ("(TRACE) traced\nline\n", written()) << "without prefix, flushed";
    EXPECT_EQ(0, WriteFileBytes(L"C:\\windows\\temp\\other.bin", "0123", 4));
    EXPECT_EQ("0123CE) traced\nline\n", written()) << "at the start, since appending is off";
    EXPECT_FALSE(std::filesystem::exists(LogFilePath()));
}

TEST_F(LogHelperTest, NoLineOfAnyThreadIsLost) {
    std::vector<std::thread> threads;
    for (int t = 0; t < 4; ++t) {
        threads.emplace_back([] {
            for (int i = 0; i < 100; ++i)
                LogWrite("f", 1, "g", false, L"line");
        });
    }
    for (std::thread &thread : threads)
        thread.join();
    EXPECT_THAT(lines(), AllOf(SizeIs(400), Each(EndsWith("g (f:1): line\r"))));
}

TEST_F(LogHelperTest, WholeFiles) {
    const wchar_t *path = L"C:\\windows\\temp\\whole.bin";
    const auto read = [](const wchar_t *from) {
        std::string bytes(8, '.');
        ReadFileBytes(from, bytes.data(), bytes.size());
        return bytes;
    };
    EXPECT_EQ(0, WriteFileBytes(path, "a\r\nb\x1A#", 6));
    EXPECT_EQ("a\nb.....", read(path)); // text mode: CR LF shrinks, 0x1A ends
    EXPECT_EQ("........", read(L"C:\\windows\\temp\\missing.bin"));
    EXPECT_EQ(ENOENT, WriteFileBytes(L"C:\\no such folder\\x", "", 1));
    LogWriteTo(path, L"%s", L"文");
    EXPECT_EQ("文.....", read(path));
}

TEST_F(LogHelperTest, SettingsOfTheWrongTypeCountAsMissing) {
    Registry::WriteStringValue(kProductKey, L"exitCmd", L"1");
    Registry::WriteDwordValue(kProductKey, L"DisplayName", 5);
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(std::nullopt, ProductSettings::readDword(L"exitCmd"));
    EXPECT_EQ(L"QorSound Kit", ProductSettings::productDisplayName());
    EXPECT_THAT(lines(), SizeIs(2)) << "each told once";
    Registry::DeleteKey(kProductKey);
    EXPECT_EQ(std::nullopt, ProductSettings::readDword(L"isStartShow"));
    EXPECT_FALSE(ProductSettings::writeDword(L"isStartShow", 1));
}

} // namespace
