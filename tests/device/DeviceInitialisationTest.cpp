#include "device/DeviceInitialisation.h"
#include "helpers/ProductSettings.h"
#include "helpers/Registry.h"
#include "support/DeviceRecorder.h"

#include <cstring>
#include <gtest/gtest.h>

namespace {

using Calls = std::vector<std::string>;
using ProductSettings::kProductKey;

const wchar_t kCurves[] = L"C:\\windows\\temp\\config\\eqs.bin";

class DeviceInitialisationTest : public testing::Test {
protected:
    DeviceInitialisationTest() {
        recorder.reset();
        auto *bytes = reinterpret_cast<uint8_t *>(&recorder.info);
        for (size_t i = 0; i < sizeof recorder.info; ++i)
            bytes[i] = static_cast<uint8_t>(i * 7 % 251);
    }

    DeviceRecorder &recorder = DeviceRecorder::instance();
    DeviceState device;
};

template<typename Block>
std::vector<uint8_t> bytesOf(const Block &block, size_t from = 0, size_t count = sizeof(Block)) {
    const auto *bytes = reinterpret_cast<const uint8_t *>(&block);
    return {bytes + from, bytes + from + count};
}

TEST_F(DeviceInitialisationTest, BlocksAreTakenFromTheirPlacesInTheRecord) {
    std::memset(&device.system, 0xEE, sizeof device.system);
    std::memset(&device.curves, 0xEE, sizeof device.curves);
    ASSERT_EQ(DeviceInitialisation::readDevice(device, kCurves), DeviceInitialisation::Reading::Done);
    EXPECT_EQ((Calls{"init()", "getDeviceInfo(0)"}), recorder.calls);
    const auto head = bytesOf(recorder.info, 0, 32);
    const auto sound = bytesOf(recorder.info, 32, 575);
    EXPECT_EQ(sound, bytesOf(device.sound));
    EXPECT_EQ(head, bytesOf(device.system, 0, 32));
    EXPECT_EQ(head, bytesOf(device.system, 32, 32));
    EXPECT_EQ(sound, bytesOf(device.system, 64, 575));
    EXPECT_EQ(std::vector<uint8_t>(292, 0), bytesOf(device.system, 639, 292));
    EXPECT_EQ(bytesOf(recorder.info, 899, 32), bytesOf(device.extension));
    EXPECT_EQ(std::vector<uint8_t>(748, 0), bytesOf(device.curves));
}

TEST_F(DeviceInitialisationTest, FullScaleGoesByWayOf99) {
    const struct {
        int speaker, microphone;
        Calls calls;
        int speakerAfter, microphoneAfter;
        DWORD pauses;
    } cases[] = {
        {99, 0, {"_SetVolum(99, 0, 0)", "_SetVolum(0, 1, 0)"}, 99, 0, 0},
        {100, 99, {"_SetVolum(99, 0, 0)", "_SetVolum(100, 0, 0)", "_SetVolum(99, 1, 0)"}, 100, 99, 1},
        {-128, 150, {"_SetVolum(-128, 0, 0)", "_SetVolum(99, 1, 0)", "_SetVolum(100, 1, 0)"}, -128, 100, 1},
    };
    for (const auto &c : cases) {
        recorder.calls.clear();
        device.sound.masterVolume = static_cast<int8_t>(c.speaker);
        device.system.head.micLevel = c.microphone;
        const DWORD start = GetTickCount();
        DeviceInitialisation::applyStoredVolumes(device);
        EXPECT_GE(GetTickCount() - start + 50, c.pauses * 500);
        EXPECT_EQ(c.calls, recorder.calls);
        EXPECT_EQ(c.speakerAfter, device.sound.masterVolume);
        EXPECT_EQ(c.microphoneAfter, static_cast<int32_t>(device.system.head.micLevel));
    }
}

TEST_F(DeviceInitialisationTest, WritesKeepTheCopyRules) {
    device.system.head.voiceEffect = 3;
    device.sound.muted = 1;
    DeviceInitialisation::writeBlocks(device);
    EXPECT_EQ((Calls{"setDeviceProperty(1)", "setDeviceProperty(2)"}), recorder.calls);
    EXPECT_EQ(3, recorder.system.headCopy.voiceEffect);
    // The system block went out first, so it still carried the sound block of before.
    EXPECT_EQ(0, recorder.system.sound.muted);
    EXPECT_EQ(1, recorder.sound.muted);
    EXPECT_EQ(bytesOf(device.sound), bytesOf(device.system, 64, 575));
}

TEST_F(DeviceInitialisationTest, ConfigurationFileStandsInTheStoredFolder) {
    RegDeleteTreeW(HKEY_LOCAL_MACHINE, L"SOFTWARE\\QorSoundKit");
    SetCurrentDirectoryW(L"C:\\windows");
    EXPECT_EQ(L"C:\\windows\\config.txt", DeviceInitialisation::configFilePath());
    Registry::CreateKey(kProductKey);
    for (const wchar_t *folder : {L"C:\\some\\folder", L"C:\\some\\folder\\"}) {
        Registry::WriteStringValue(kProductKey, L"ConfigPath", folder);
        EXPECT_EQ(L"C:\\some\\folder\\config.txt", DeviceInitialisation::configFilePath());
    }
}

} // namespace
