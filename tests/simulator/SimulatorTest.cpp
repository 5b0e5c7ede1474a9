// The simulated device-control library through its entry points. What the panel's own tests show (the
// journal, the instance name, failures at start) is not repeated here.
#include "device/DeviceApi.h"
#include "device/qor_ecd_api.h"
#include "simulator/ExecutablePath.h"

#include <array>
#include <cstring>
#include <filesystem>
#include <gtest/gtest.h>
#include <process.h>
#include <windows.h>

namespace {

constexpr uint32_t kKey = DeviceApi::kAccessKey;
constexpr wchar_t kSimulatorKey[] = L"Software\\QorSoundKit Simulator";

class SimulatorTest : public testing::Test {
protected:
    SimulatorTest() { reset(); }
    ~SimulatorTest() override { reset(); }

    static void reset() { RegDeleteTreeW(HKEY_CURRENT_USER, kSimulatorKey); }
};

std::array<uint8_t, sizeof(DeviceInfo)> bytesOf(const DeviceInfo &record) {
    std::array<uint8_t, sizeof(DeviceInfo)> bytes;
    std::memcpy(bytes.data(), &record, sizeof record);
    return bytes;
}

TEST_F(SimulatorTest, BlocksAreKeptAndShowInTheRecord) {
    SystemBlock system{};
    system.head.micLevel = -5;
    system.head.reserved28[3] = 0x7E; // the head's last byte
    system.headCopy.micLevel = 77;    // the panel's own copy, which the device does not keep
    SoundBlock sound{};
    std::memset(&sound, 0x33, sizeof sound);
    ExtBlock extension{};
    std::memset(&extension, 0x55, sizeof extension);

    DeviceInfo record{};
    std::memset(record.reserved, 0xA5, sizeof record.reserved);
    EXPECT_EQ(setDeviceProperty(&record, 1, &system, kKey), 0);
    EXPECT_EQ(setDeviceProperty(&record, 2, &sound, kKey), 0);
    EXPECT_EQ(setDeviceProperty(&record, 3, &extension, kKey), 0);
    EXPECT_EQ(setDeviceProperty(&record, 4, &extension, kKey), -1);
    EXPECT_EQ(setDeviceProperty(&record, 3, &system, kKey ^ 1), -1) << "wrong access key";

    DeviceInfo expected{};
    expected.system = system.head;
    expected.sound = sound;
    expected.extension = extension;
    DeviceInfo reloaded{};
    EXPECT_EQ(getDeviceInfo(0, &reloaded, kKey), 0);
    EXPECT_EQ(bytesOf(reloaded), bytesOf(expected));
    std::memset(expected.reserved, 0xA5, sizeof expected.reserved);
    EXPECT_EQ(bytesOf(record), bytesOf(expected)) << "the caller's record, whose other bytes stay";
}

int32_t transfer(uint8_t command, uint8_t *reply) {
    const uint8_t request[64] = {command, 0x01};
    return _hid_trans_data(kKey, 0x040B, 0xF779, 3, 2, request, reply);
}

// The byte of the answer to a battery request.
template<size_t Index>
int32_t batteryByte() {
    uint8_t reply[64] = {};
    EXPECT_EQ(transfer(0x0B, reply), 64);
    return reply[Index];
}

int32_t readRecord() {
    DeviceInfo record{};
    const int32_t result = getDeviceInfo(0, &record, kKey);
    return result == 0 ? record.sound.masterVolume : result;
}

// The command that steers the headset, as a user gives it; its exit code.
intptr_t headset(const wchar_t *words) {
    std::wstring program = executablePath();
    program.replace(program.find_last_of(L'\\') + 1, std::wstring::npos, L"headset.exe");
    return _wspawnl(_P_WAIT, program.c_str(), L"headset", words, nullptr);
}

TEST_F(SimulatorTest, CommandsWorkWhileTheLibraryIsLoaded) {
    const struct {
        const wchar_t *words;
        int32_t (*call)();
        int32_t usual, afterwards;
    } cases[] = {
        {L"set InitResult -7", [] { return init(kKey); }, 0, -7},
        {L"unplug", [] { return getDeviceCount(kKey); }, 1, 0},
        {L"unplug", readRecord, 60, -1},
        {L"set DeviceInfoResult 0xFFFFFFFD", readRecord, 60, -3},
        {L"set StartImage 2", readRecord, 60, -1},
        {L"off", batteryByte<1>, 1, 0},
        {L"charge", batteryByte<2>, 0, 1},
        {L"battery 30", batteryByte<3>, 6, 2},
        {L"refuse", [] { return transfer(0x0A, nullptr); }, 64, 0},
        {L"set FirmwareVersion 0x310", [] { return transfer(0xFF, nullptr); }, 0x0203, 0x0310},
        {L"set PlaybackVolume 500", [] { return _getVolum(0, 0); }, 50, 100},
        {L"set ForceElevated 0", [] { return _IsRunningAsAdmin(); }, 1, 0},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(std::filesystem::path(c.words).string());
        EXPECT_EQ(headset(L"reset"), 0);
        EXPECT_EQ(c.call(), c.usual);
        EXPECT_EQ(headset(c.words), 0);
        EXPECT_EQ(c.call(), c.afterwards);
    }
    for (const wchar_t *wrong : {L"", L"unknown", L"battery 5", L"set InitResult x"})
        EXPECT_EQ(headset(wrong), 1) << std::filesystem::path(wrong);
}

} // namespace
