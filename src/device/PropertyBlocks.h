// The byte images that the panel exchanges whole with the device-control library. They are a wire format:
// little-endian, packed, offsets and sizes binding. Bytes without a name are passed through unchanged.
#pragma once

#include <cstddef>
#include <cstdint>

// How an effect's switch byte is read everywhere: one that is neither 0 nor 1 counts as off.
constexpr bool switchedOn(uint8_t switchByte) {
    return switchByte == 1;
}

#pragma pack(push, 1)

// Head of the system settings: bytes 0..31 of DeviceInfo and of SystemBlock.
struct SystemHead {
    uint8_t reserved0[8];
    int32_t micLevel;         // 8:  microphone input level, 0..100
    int32_t monitorLevel;     // 12: microphone monitoring level, 0..100
    int32_t noiseLevel;       // 16: noise-reduction level, 0..100, reset value 50
    uint8_t voiceEffectOn;    // 20: 0/1
    uint8_t voiceEffect;      // 21: 1..4
    uint8_t echoOn;           // 22: 0/1
    uint8_t noiseReductionOn; // 23: 0/1
    uint8_t micMuted;         // 24: 0/1
    uint8_t micPageSwitch;    // 25: 0/1
    uint8_t effectLevel;      // 26: 0..100
    uint8_t monitoringOn;     // 27: 0/1, while set "normal.exe" runs
    uint8_t reserved28[4];
};

// Type-2 property block.
struct SoundBlock {
    uint8_t pageSwitch;        // 0:  switch of the volume page, 0/1
    uint8_t virtualSurroundOn; // 1:  exclusive group, 0/1
    uint8_t reserved2[6];
    int8_t masterVolume;    // 8:  0..100
    int8_t leftVolume;      // 9:  0..100
    int8_t rightVolume;     // 10: 0..100
    uint8_t muted;          // 11: 0/1
    uint8_t hiddenSwitch;   // 12: shown on a hidden button
    uint8_t position;       // 13: 1..4
    uint8_t room;           // 14: 1..3
    uint8_t soundFieldOn;   // 15: exclusive group, 0/1
    uint8_t fieldAngleMode; // 16: 1 rotate -1, 2 rotate +1, 3 held, 4 centred
    int8_t speakerLevel[8]; // 17..24: -13..4
    uint8_t reserved25[8];
    uint8_t roomEffectOn; // 33: exclusive group, 0/1
    uint8_t equalizerOn;  // 34: exclusive group, 0/1
    uint8_t reserved35[540];
};

// Type-1 property block.
struct SystemBlock {
    SystemHead head;
    SystemHead headCopy; // copy of head, made before every write of this block
    SoundBlock sound;    // copy of SoundBlock, made before every write of that block: the last one sent
    uint8_t reserved[292];
};

// Type-3 property block.
struct ExtBlock {
    int8_t gain[10]; // dB, -20..20, for 30, 60, 120, 250, 500, 1K, 2K, 4K, 8K and 16K Hz
    uint8_t reserved[22];
};

// Device information record, filled by getDeviceInfo and given back with every later call.
struct DeviceInfo {
    SystemHead system;
    SoundBlock sound;
    uint8_t reserved[292];
    ExtBlock extension;
};

// USB vendor id, product id and two selectors of the HID interface, as _hid_trans_data takes them.
struct UsbIds {
    uint32_t id[4];
};

// One named curve of the EQ curve file.
struct EqCurve {
    char16_t name[32]; // UTF-16LE, zero-terminated and zero-padded, at most 31 units
    int8_t gain[10];   // dB, -20..20
};

// The EQ curve file "/config/eqs.bin", exactly as on disk.
struct EqCurveStore {
    int32_t count;   // 0..10
    int32_t current; // index of the curve last saved or selected
    EqCurve curve[10];
};

#pragma pack(pop)

static_assert(sizeof(SystemHead) == 32);
static_assert(offsetof(SystemHead, micLevel) == 8);
static_assert(offsetof(SystemHead, noiseLevel) == 16);
static_assert(offsetof(SystemHead, voiceEffectOn) == 20);
static_assert(offsetof(SystemHead, monitoringOn) == 27);
static_assert(sizeof(SoundBlock) == 575);
static_assert(offsetof(SoundBlock, masterVolume) == 8);
static_assert(offsetof(SoundBlock, muted) == 11);
static_assert(offsetof(SoundBlock, room) == 14);
static_assert(offsetof(SoundBlock, speakerLevel) == 17);
static_assert(offsetof(SoundBlock, roomEffectOn) == 33);
static_assert(offsetof(SoundBlock, equalizerOn) == 34);
static_assert(sizeof(SystemBlock) == 931);
static_assert(offsetof(SystemBlock, headCopy) == 32);
static_assert(offsetof(SystemBlock, sound) == 64);
static_assert(offsetof(SystemBlock, reserved) == 639);
static_assert(sizeof(ExtBlock) == 32);
static_assert(sizeof(DeviceInfo) == 931);
static_assert(offsetof(DeviceInfo, sound) == 32);
static_assert(offsetof(DeviceInfo, extension) == 899);
static_assert(sizeof(EqCurve) == 74);
static_assert(sizeof(EqCurveStore) == 748);
