#include "simulator/SimulatorLibrary.h"

#include <filesystem>
#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::MatchesRegex;
using testing::StartsWith;

namespace {

class JournalTest : public SimulatorTest {};

TEST_F(JournalTest, TellsEveryCallInOrder) {
    SimulatorLibrary library;
    DeviceInfo record{};
    SystemBlock system{};
    system.head.micLevel = 0x64;
    system.head.monitoringOn = 1;
    SoundBlock sound{};
    sound.masterVolume = 99;
    sound.equalizerOn = 1;
    ExtBlock extension{};
    extension.gain[0] = -20;

    library.isRunningAsAdmin();
    library.getDeviceCount(kKey);
    library.init(kKey);
    library.getDeviceInfo(0, &record, kKey);
    library.setDeviceProperty(&record, 1, &system, kKey);
    library.setDeviceProperty(&record, 2, &sound, kKey);
    library.setDeviceProperty(&record, 3, &extension, kKey);
    library.releaseDeviceInfo(&record, kKey);

    EXPECT_THAT(
        journal(),
        ElementsAre(
            StartsWith("_IsRunningAsAdmin() -> "), "getDeviceCount() -> 1", "init() -> 0",
            "getDeviceInfo(0) -> 0",
            "setDeviceProperty(type 1, 8: 64 00 00 00 00 00 00 00 00 00 00 00  "
            "20: 00 00 00 00 00 00 00 01) -> 0",
            "setDeviceProperty(type 2, 0: 00 00  8: 63 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00  "
            "33: 00 01) -> 0",
            "setDeviceProperty(type 3, 0: ec 00 00 00 00 00 00 00 00 00) -> 0", "releaseDeviceInfo() -> 0"));
}

TEST_F(JournalTest, LinesStartWithTimeProcessAndThread) {
    SimulatorLibrary().init(kKey);
    const std::string ids =
        std::to_string(GetCurrentProcessId()) + " " + std::to_string(GetCurrentThreadId());
    EXPECT_THAT(readFile(journalPath()),
                MatchesRegex("....-..-.. ..:..:..\\.... " + ids + " init\\(\\) -> 0\n"));
}

TEST_F(JournalTest, StartsAnewWhenLargeAndKeepsOneOldFile) {
    const std::string big(4 * 1024 * 1024, 'x');
    writeFile(journalPath(), big);
    writeFile(journalPath() + L".old", "older");
    SimulatorLibrary library;
    library.init(kKey);
    library.getDeviceCount(kKey);
    EXPECT_EQ(std::filesystem::file_size(journalPath() + L".old"), big.size());
    EXPECT_THAT(journal(), ElementsAre("init() -> 0", "getDeviceCount() -> 1"));
}

TEST_F(JournalTest, AnUnwritableJournalDisturbsNothing) {
    SimulatorLibrary library;
    setText(L"JournalPath", folder_); // a folder
    EXPECT_EQ(library.init(kKey), 0);
    setText(L"JournalPath", L"Q:\\nowhere\\journal.txt");
    EXPECT_EQ(library.getDeviceCount(kKey), 1);
}

TEST_F(JournalTest, DefaultPlaceIsTheUsersLocalFolder) {
    setKnob(L"JournalPath", 1); // of the wrong type, hence missing
    wchar_t folder[MAX_PATH];
    GetEnvironmentVariableW(L"LOCALAPPDATA", folder, MAX_PATH);
    const std::wstring file = std::wstring(folder) + L"\\QorSoundKit Simulator\\journal.txt";
    std::filesystem::remove(file);
    SimulatorLibrary().init(kKey);
    EXPECT_THAT(readFile(file), testing::EndsWith("init() -> 0\n"));
}

} // namespace
