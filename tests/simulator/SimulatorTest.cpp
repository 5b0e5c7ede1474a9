// The simulated device-control library through its entry points. What the panel's own tests show (the
// journal, the instance name, failures at start) is not repeated here.
#include "device/DeviceApi.h"
#include "device/qor_ecd_api.h"

#include <array>
#include <cstring>
#include <gmock/gmock.h>
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

TEST_F(SimulatorTest, KnobsWorkWhileTheLibraryIsLoaded) {
    const struct {
        const wchar_t *knob;
        int32_t (*call)();
        int32_t usual;
        uint32_t value;
        int32_t turned;
    } cases[] = {
        {L"InitResult", [] { return init(kKey); }, 0, 0xFFFFFFF9, -7},
        {L"DeviceCount", [] { return getDeviceCount(kKey); }, 1, 0, 0},
        {L"DeviceCount", readRecord, 60, 0, -1},
        {L"DeviceInfoResult", readRecord, 60, 0xFFFFFFFD, -3},
        {L"StartImage", readRecord, 60, 2, -1},
        {L"UsbConnected", batteryByte<1>, 1, 0, 0},
        {L"Charging", batteryByte<2>, 0, 1, 1},
        {L"BatteryStep", batteryByte<3>, 6, 255, 255},
        {L"RefuseReports", [] { return transfer(0x0A, nullptr); }, 64, 1, 0},
        {L"FirmwareVersion", [] { return transfer(0xFF, nullptr); }, 0x0203, 0x0310, 0x0310},
        {L"PlaybackVolume", [] { return _getVolum(0, 0); }, 50, 500, 100},
        {L"ForceElevated", [] { return _IsRunningAsAdmin(); }, 1, 0, 0},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(std::string(c.knob, c.knob + std::wcslen(c.knob)));
        reset();
        EXPECT_EQ(c.call(), c.usual);
        RegSetKeyValueW(HKEY_CURRENT_USER, kSimulatorKey, c.knob, REG_DWORD, &c.value, sizeof c.value);
        EXPECT_EQ(c.call(), c.turned);
    }
}

} // namespace
