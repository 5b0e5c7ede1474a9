#include "helpers/LogHelper.h"
#include "helpers/ProductSettings.h"
#include "helpers/Registry.h"
#include "helpers/UniqueFile.h"
#include "helpers/WinHandles.h"

#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <thread>

using ProductSettings::kProductKey;
using namespace testing;

class LogHelperTest : public Test {
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

    static std::vector<std::string> lines(const std::filesystem::path &file = LogFilePath()) {
        std::ifstream in(file, std::ios::binary);
        std::vector<std::string> result;
        for (std::string line; std::getline(in, line);)
            result.push_back(line);
        return result;
    }
};

TEST_F(LogHelperTest, EveryLineOfEveryThreadIsWritten) {
    std::vector<std::thread> threads;
    for (int t = 0; t < 4; ++t) {
        threads.emplace_back([] {
            for (int i = 0; i < 100; ++i)
                LogWrite("helpers/Some.cpp", 42, "some", false, L"%s and %S: %d", L"音量", "narrow", -7);
        });
    }
    for (std::thread &thread : threads)
        thread.join();
    const std::string processId = std::to_string(GetCurrentProcessId());
    EXPECT_THAT(
        lines(),
        AllOf(SizeIs(400),
              Each(MatchesRegex(processId + R"( \d\d:\d\d:\d\d\.\d\d\d \d+ )"
                                            "some \\(helpers/Some\\.cpp:42\\): 音量 and narrow: -7\r"))));
}

TEST_F(LogHelperTest, TraceIsSwitchedOnByTheExactTextOnlyAndReadsItsLevels) {
    Registry::WriteDwordValue(kProductKey, L"level_low", static_cast<uint32_t>(-2));
    for (const std::wstring text : {L"True", L"true ", L"", L"true"}) {
        forget();
        Registry::WriteStringValue(kProductKey, L"EnableTrace", text);
        LogWrite("f", 1, "g", true, L"traced");
        EXPECT_EQ(lines().size(), text == L"true") << std::filesystem::path(text);
        EXPECT_EQ(LogLevelEnabled(-2), text == L"true");
        EXPECT_FALSE(LogLevelEnabled(-3) || LogLevelEnabled(1));
    }
    EXPECT_THAT(lines(), ElementsAre(EndsWith("g (f:1): (TRACE) traced\r")));
}

TEST_F(LogHelperTest, WaitsForNoOtherProgram) {
    for (const DWORD share : {DWORD{0}, DWORD{FILE_SHARE_READ | FILE_SHARE_WRITE}}) {
        const UniqueFileHandle held(CreateFileW(LogFilePath().c_str(), GENERIC_READ | GENERIC_WRITE, share,
                                                nullptr, OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
        const DWORD start = GetTickCount();
        for (int i = 0; i < 50; ++i)
            LogWrite("f", 1, "g", false, share ? L"written" : L"lost");
        EXPECT_LT(GetTickCount() - start, 2000u);
    }
    EXPECT_THAT(lines(), AllOf(SizeIs(50), Each(EndsWith("written\r"))));
}

TEST_F(LogHelperTest, PersistentStreamTakesEverythingAndStaysOpen) {
    const wchar_t *file = L"C:\\windows\\temp\\stream.txt";
    const UniqueFile stream(_wfopen(file, L"wb"));
    LogConfigure(stream.get(), true, true, false);
    LogWrite("f", 1, "g", true, L"traced");
    LogWrite("f", 1, "g", false, L"line");
    EXPECT_THAT(lines(file), ElementsAre("(TRACE) traced", "line")) << "without prefix, flushed";
    EXPECT_EQ(0, WriteFileBytes(L"C:\\windows\\temp\\other.bin", "0123", 4));
    EXPECT_THAT(lines(file), ElementsAre("0123CE) traced", "line")) << "at the start: appending is off";
}

TEST_F(LogHelperTest, SettingsOfTheWrongTypeCountAsMissing) {
    Registry::WriteStringValue(kProductKey, L"exitCmd", L"1");
    Registry::WriteDwordValue(kProductKey, L"DisplayName", 5);
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(ProductSettings::readDword(L"exitCmd"), std::nullopt);
    EXPECT_EQ(ProductSettings::productDisplayName(), L"QorSound Kit");
    EXPECT_THAT(lines(), SizeIs(2)) << "each told once";
}
