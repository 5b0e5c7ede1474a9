// Without arguments: the tests. With --claim and a mutex name: the second process of a test, whose exit code
// is the simulator's answer.
#include "helpers/WinHandles.h"
#include "simulator/SimulatorLibrary.h"

#include <array>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <shellapi.h>
#include <vector>

namespace {

using testing::Each;
using testing::HasSubstr;
using testing::MatchesRegex;

constexpr wchar_t kSimulatorKey[] = L"Software\\QorSoundKit Simulator";
constexpr wchar_t kClaimOption[] = L"--claim";
constexpr wchar_t kMutexName[] = L"Global\\{C2B5E0A1-0D7E-4E5C-9F1B-6E1D2A7C4B10}";

using Report = std::array<uint8_t, 64>;

// A fresh simulator for each test: an empty registry key and a journal of its own.
class SimulatorTest : public testing::Test {
protected:
    SimulatorTest() { reset(); }

    void reset() {
        RegDeleteTreeW(HKEY_CURRENT_USER, kSimulatorKey);
        const std::wstring path = journalPath_.wstring();
        const auto size = static_cast<DWORD>((path.size() + 1) * sizeof(wchar_t));
        RegSetKeyValueW(HKEY_CURRENT_USER, kSimulatorKey, L"JournalPath", REG_SZ, path.c_str(), size);
        std::filesystem::remove(journalPath_);
    }

    std::vector<std::string> journal() const {
        std::ifstream file(journalPath_, std::ios::binary);
        std::vector<std::string> lines;
        for (std::string line; std::getline(file, line);)
            lines.push_back(line);
        return lines;
    }

    const std::filesystem::path journalPath_ = std::filesystem::temp_directory_path() / "simulator_test.txt";
};

std::array<uint8_t, sizeof(DeviceInfo)> bytesOf(const DeviceInfo &record) {
    std::array<uint8_t, sizeof(DeviceInfo)> bytes;
    std::memcpy(bytes.data(), &record, sizeof record);
    return bytes;
}

TEST_F(SimulatorTest, BlocksSurviveARestartAndShowInTheRecord) {
    SystemBlock system{};
    system.head.micLevel = -5;
    system.head.reserved28[3] = 0x7E; // the head's last byte
    system.headCopy.micLevel = 77;    // the panel's own copy, which the device does not keep
    SoundBlock sound{};
    std::memset(&sound, 0x33, sizeof sound);
    sound.reserved35[539] = 0x44; // the block's last byte
    ExtBlock extension{};
    extension.gain[9] = -20;
    extension.reserved[21] = 0x55; // the block's last byte

    DeviceInfo record{};
    std::memset(record.reserved, 0xA5, sizeof record.reserved);
    {
        SimulatorLibrary library;
        EXPECT_EQ(library.setDeviceProperty(&record, 1, &system, kKey), 0);
        EXPECT_EQ(library.setDeviceProperty(&record, 2, &sound, kKey), 0);
        EXPECT_EQ(library.setDeviceProperty(&record, 3, &extension, kKey), 0);
    }

    DeviceInfo expected{};
    expected.system = system.head;
    expected.sound = sound;
    expected.extension = extension;
    DeviceInfo reloaded{};
    EXPECT_EQ(SimulatorLibrary().getDeviceInfo(0, &reloaded, kKey), 0);
    EXPECT_EQ(bytesOf(reloaded), bytesOf(expected)) << "after a restart";
    std::memset(expected.reserved, 0xA5, sizeof expected.reserved);
    EXPECT_EQ(bytesOf(record), bytesOf(expected)) << "in the caller's record, whose other bytes stay";
}

TEST_F(SimulatorTest, RefusesAWrongAccessKeyEverywhere) {
    SimulatorLibrary library;
    constexpr uint32_t kWrong = kKey ^ 1;
    DeviceInfo record{};
    SystemBlock block{};
    uint32_t id[4] = {};
    uint8_t report[64] = {0x0B};
    EXPECT_EQ(library.init(kWrong), -1);
    EXPECT_EQ(library.getDeviceCount(kWrong), -1);
    EXPECT_EQ(library.getDeviceInfo(0, &record, kWrong), -1);
    EXPECT_EQ(library.setDeviceProperty(&record, 1, &block, kWrong), -1);
    EXPECT_EQ(library.releaseDeviceInfo(&record, kWrong), -1);
    EXPECT_EQ(library.execUsbEncrypt(kWrong, &id[0], &id[1], &id[2], &id[3]), -1);
    EXPECT_EQ(library.hidTransData(kWrong, 0x040B, 0xF779, 3, 2, report, report), -1);
    EXPECT_EQ(journal().size(), 7u);
    EXPECT_THAT(journal(), Each(HasSubstr("-> -1 (wrong access key)")));
    EXPECT_THAT(bytesOf(record), Each(0));
    EXPECT_THAT(id, Each(0u));
}

// The byte of the answer to a battery request.
template<size_t Index>
int32_t batteryByte(SimulatorLibrary &library) {
    const Report request{0x0B, 0x01};
    Report reply{};
    EXPECT_EQ(library.hidTransData(kKey, 0x040B, 0xF779, 3, 2, request.data(), reply.data()), 64);
    return reply[Index];
}

int32_t readRecord(SimulatorLibrary &library) {
    DeviceInfo record{};
    const int32_t result = library.getDeviceInfo(0, &record, kKey);
    return result == 0 ? record.sound.masterVolume : result;
}

TEST_F(SimulatorTest, KnobsWorkWhileTheLibraryIsLoaded) {
    using Library = SimulatorLibrary;
    const struct {
        const wchar_t *knob;
        int32_t (*call)(Library &);
        int32_t usual;
        uint32_t value;
        int32_t turned;
    } cases[] = {
        {L"InitResult", [](Library &l) { return l.init(kKey); }, 0, 0xFFFFFFF9, -7},
        {L"DeviceCount", [](Library &l) { return l.getDeviceCount(kKey); }, 1, 0, 0},
        {L"DeviceCount", readRecord, 60, 0, -1},
        {L"DeviceInfoResult", readRecord, 60, 0xFFFFFFFD, -3},
        {L"StartImage", readRecord, 60, 2, -1},
        {L"UsbConnected", batteryByte<1>, 1, 0, 0},
        {L"Charging", batteryByte<2>, 0, 1, 1},
        {L"BatteryStep", batteryByte<3>, 6, 255, 255},
        {L"FirmwareVersion",
         [](Library &l) { return l.hidTransData(kKey, 0x040B, 0xF778, 3, 2, Report{0xFF}.data(), nullptr); },
         0x0203, 0x0310, 0x0310},
        {L"PlaybackVolume", [](Library &l) { return l.getVolum(0, 0); }, 50, 500, 100},
        {L"ForceElevated", [](Library &l) { return l.isRunningAsAdmin(); }, 1, 0, 0},
        {L"RestartResult", [](Library &l) { return l.restartAsAdmin(); }, 1, 0, 0},
    };
    SimulatorLibrary library;
    for (const auto &c : cases) {
        reset();
        const auto set = [&](uint32_t value) {
            RegSetKeyValueW(HKEY_CURRENT_USER, kSimulatorKey, c.knob, REG_DWORD, &value, sizeof value);
        };
        if (std::wstring(c.knob) == L"RestartResult")
            set(1); // without the knob it would start a process
        EXPECT_EQ(c.call(library), c.usual) << std::filesystem::path(c.knob);
        set(c.value);
        EXPECT_EQ(c.call(library), c.turned) << std::filesystem::path(c.knob);
    }
}

TEST_F(SimulatorTest, HelperIsStartedFoundAndStopped) {
    SimulatorLibrary library;
    EXPECT_EQ(library.startTask(L"missing.exe", nullptr, 0, nullptr), 0);
    EXPECT_EQ(library.startTask(nullptr, nullptr, 0, nullptr), 0);
    EXPECT_EQ(library.isTaskRunning(L"normal.exe"), 0);
    EXPECT_EQ(library.startTask(L"normal.exe", L"", 0, nullptr), 1);
    EXPECT_EQ(library.isTaskRunning(L"NORMAL.EXE"), 1) << "names without regard to case";
    EXPECT_EQ(library.isTaskRunning(L"norm"), 0) << "whole names only";
    EXPECT_EQ(library.killTask(L"Normal.exe"), 1);
    EXPECT_EQ(library.isTaskRunning(L"normal.exe"), 0) << "gone when the call returns";
}

// The simulator's answer in a second process.
DWORD claimInAnotherProcess() {
    wchar_t path[MAX_PATH];
    GetModuleFileNameW(nullptr, path, MAX_PATH);
    std::wstring commandLine = L"\"" + std::wstring(path) + L"\" " + kClaimOption + L" " + kMutexName;
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION created{};
    DWORD exitCode = 999;
    if (!CreateProcessW(nullptr, commandLine.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup,
                        &created))
        return exitCode;
    const UniqueHandle process(created.hProcess), thread(created.hThread);
    if (WaitForSingleObject(process.get(), 20000) == WAIT_OBJECT_0)
        GetExitCodeProcess(process.get(), &exitCode);
    return exitCode;
}

TEST_F(SimulatorTest, InstanceNameIsHeldUntilTheProcessEnds) {
    EXPECT_EQ(claimInAnotherProcess(), 0u);
    EXPECT_EQ(claimInAnotherProcess(), 0u) << "the first holder has ended";
    EXPECT_EQ(SimulatorLibrary().isAlreadyRun(kMutexName), 0);
    EXPECT_EQ(claimInAnotherProcess(), 1u) << "the name belongs to the process, not to one loading";
}

TEST_F(SimulatorTest, JournalTellsEveryCall) {
    SimulatorLibrary library;
    DeviceInfo record{};
    SoundBlock sound{};
    sound.masterVolume = 99;
    sound.equalizerOn = 1;
    library.setDeviceProperty(&record, 2, &sound, kKey);
    library.hidTransData(kKey, 0x040B, 0xF779, 3, 2, Report{0x0A, 3, 50, 255}.data(), nullptr);
    library.setMasterMute(1, 0);
    ASSERT_EQ(journal().size(), 3u);
    const std::string ids =
        std::to_string(GetCurrentProcessId()) + " " + std::to_string(GetCurrentThreadId());
    EXPECT_THAT(journal()[0], MatchesRegex("....-..-.. ..:..:..\\.... " + ids + " setDeviceProperty\\(.*"));
    EXPECT_THAT(journal()[0],
                HasSubstr("(type 2, 0: 00 00  8: 63 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00  "
                          "33: 00 01) -> 0"));
    EXPECT_THAT(journal()[1], HasSubstr("_hid_trans_data(1035, 63353, 3, 2) [0a 03 32 ff] -> 64"));
    EXPECT_THAT(journal()[2], HasSubstr("_SetMasterMute(1, 0) -> 0"));
}

} // namespace

int main(int argc, char **argv) {
    int count = 0;
    wchar_t **arguments = CommandLineToArgvW(GetCommandLineW(), &count);
    if (arguments && count == 3 && std::wstring(arguments[1]) == kClaimOption)
        return SimulatorLibrary().isAlreadyRun(arguments[2]);
    LocalFree(arguments);
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
