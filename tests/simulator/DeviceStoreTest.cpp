#include "simulator/SimulatorLibrary.h"

#include <cstring>
#include <gmock/gmock.h>

using testing::Each;
using testing::ElementsAre;
using testing::HasSubstr;

namespace {

using RecordBytes = std::array<uint8_t, sizeof(DeviceInfo)>;

RecordBytes bytesOf(const DeviceInfo &record) {
    RecordBytes bytes;
    std::memcpy(bytes.data(), &record, sizeof record);
    return bytes;
}

class DeviceStoreTest : public SimulatorTest {
protected:
    DeviceInfo read() {
        DeviceInfo record{};
        EXPECT_EQ(SimulatorLibrary().getDeviceInfo(0, &record, kKey), 0);
        return record;
    }
};

TEST_F(DeviceStoreTest, StartsWithSettingsOfAHeadsetInUse) {
    const DeviceInfo record = read();
    EXPECT_EQ(record.system.micLevel, 80);
    EXPECT_EQ(record.system.noiseLevel, 50);
    EXPECT_EQ(record.sound.masterVolume, 60);
    // At most one effect of the group that exclude each other.
    EXPECT_LE(record.sound.virtualSurroundOn + record.sound.soundFieldOn + record.sound.roomEffectOn +
                  record.sound.equalizerOn,
              1);
    for (const int gain : record.extension.gain)
        EXPECT_LE(std::abs(gain), 20);
}

TEST_F(DeviceStoreTest, BlocksSurviveARestartAndShowInTheRecord) {
    SystemBlock system{};
    system.head.micLevel = -5;
    system.head.monitoringOn = 1;
    system.head.reserved28[3] = 0x7E; // the head's last byte
    system.headCopy.micLevel = 77;    // the panel's own copy, which the device does not keep
    SoundBlock sound{};
    std::memset(&sound, 0x33, sizeof sound);
    sound.reserved35[539] = 0x44; // the block's last byte
    ExtBlock extension{};
    extension.gain[9] = -20;
    extension.reserved[21] = 0x55; // the block's last byte

    DeviceInfo record = read();
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
    EXPECT_EQ(bytesOf(read()), bytesOf(expected)) << "after a restart";
    std::memset(expected.reserved, 0xA5, sizeof expected.reserved);
    EXPECT_EQ(bytesOf(record), bytesOf(expected)) << "in the caller's record, whose other bytes stay";
}

TEST_F(DeviceStoreTest, DamagedValuesGiveTheStartImage) {
    const RecordBytes fresh = bytesOf(read());
    setBytes(L"SystemHead", std::vector<uint8_t>(31, 1));
    setBytes(L"SoundBlock", std::vector<uint8_t>(576, 1));
    setText(L"ExtBlock", L"not even binary");
    EXPECT_EQ(bytesOf(read()), fresh);
    setBytes(L"SoundBlock", {});
    EXPECT_EQ(bytesOf(read()), fresh);
    setText(L"DeviceCount", L"2");
    EXPECT_EQ(SimulatorLibrary().getDeviceCount(kKey), 1);
}

TEST_F(DeviceStoreTest, TheStartImageCanBeChosen) {
    setKnob(L"StartImage", 2);
    EXPECT_THAT(bytesOf(read()), Each(0xFF));
    setKnob(L"StartImage", 1);
    EXPECT_THAT(bytesOf(read()), Each(0));
    setKnob(L"StartImage", 99);
    EXPECT_EQ(read().sound.masterVolume, 60);
    setKnob(L"StartImage", 2);
    setBytes(L"ExtBlock", std::vector<uint8_t>(sizeof(ExtBlock), 7));
    EXPECT_EQ(read().extension.gain[0], 7) << "a block that was written comes before the start image";
    EXPECT_EQ(read().sound.masterVolume, -1);
}

TEST_F(DeviceStoreTest, KnobsWorkWhileTheLibraryIsLoaded) {
    SimulatorLibrary library;
    DeviceInfo record{};
    ExtBlock block{};
    EXPECT_EQ(library.init(kKey), 0);
    EXPECT_EQ(library.getDeviceCount(kKey), 1);

    setKnob(L"InitResult", static_cast<uint32_t>(-7));
    EXPECT_EQ(library.init(kKey), -7);
    setKnob(L"DeviceInfoResult", static_cast<uint32_t>(-3));
    std::memset(&record, 0xEE, sizeof record);
    EXPECT_EQ(library.getDeviceInfo(0, &record, kKey), -3);
    EXPECT_THAT(bytesOf(record), Each(0xEE)) << "a refused read leaves the record alone";
    setKnob(L"DeviceInfoResult", 5);
    EXPECT_EQ(library.getDeviceInfo(0, &record, kKey), 5);
    EXPECT_EQ(record.sound.masterVolume, 60);

    setKnob(L"DeviceCount", 0);
    EXPECT_EQ(library.getDeviceCount(kKey), 0);
    EXPECT_LT(library.getDeviceInfo(0, &record, kKey), 0);
    EXPECT_LT(library.setDeviceProperty(&record, 3, &block, kKey), 0);
    EXPECT_THAT(storedBytes(L"ExtBlock"), testing::IsEmpty()) << "nothing is kept while unplugged";
    setKnob(L"DeviceCount", 1);
    EXPECT_EQ(library.setDeviceProperty(&record, 3, &block, kKey), 0);
}

TEST_F(DeviceStoreTest, RefusesWhatARealLibraryWouldCrashOn) {
    SimulatorLibrary library;
    DeviceInfo record{};
    SystemBlock block{};
    for (const int32_t index : {-1, 1, INT32_MAX})
        EXPECT_LT(library.getDeviceInfo(index, &record, kKey), 0) << index;
    for (const int32_t type : {-1, 0, 4})
        EXPECT_LT(library.setDeviceProperty(&record, type, &block, kKey), 0) << type;
    EXPECT_LT(library.getDeviceInfo(0, nullptr, kKey), 0);
    EXPECT_LT(library.setDeviceProperty(nullptr, 1, &block, kKey), 0);
    EXPECT_LT(library.setDeviceProperty(&record, 1, nullptr, kKey), 0);
    EXPECT_THAT(lastLine(), HasSubstr("null) -> -1 (no block)"));
}

TEST_F(DeviceStoreTest, RefusesAWrongAccessKeyEverywhere) {
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

    const auto lines = journal();
    EXPECT_EQ(lines.size(), 7u);
    EXPECT_THAT(lines, Each(HasSubstr("-> -1 (wrong access key)")));
    EXPECT_THAT(bytesOf(record), Each(0));
    EXPECT_THAT(id, Each(0u));
    EXPECT_THAT(storedBytes(L"SystemHead"), testing::IsEmpty());
}

} // namespace
