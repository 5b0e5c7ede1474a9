// A stand-in for the device-control library, linked into test programs: it records every call in order, keeps
// the blocks that were written, and answers as the test set it up.
#pragma once

#include "device/PropertyBlocks.h"

#include <array>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

class DeviceRecorder {
public:
    static DeviceRecorder &instance();

    // Forgets everything and restores the defaults.
    void reset();

    // One readable line per call, e.g. "_SetVolum(99, 0, 0)", "setDeviceProperty(2)",
    // "_kill_task(normal.exe)". Wrong access keys and null pointers show up in the line.
    std::vector<std::string> calls;
    std::vector<uint32_t> callTimes; // milliseconds (GetTickCount) of each call

    // What setDeviceProperty received last, by type.
    SystemBlock system{};
    SoundBlock sound{};
    ExtBlock extension{};

    // Reports given to _hid_trans_data, and the answer to the next ones.
    std::vector<std::array<uint8_t, 64>> reports;
    std::array<uint8_t, 64> reply{};
    int32_t transferResult = 64;

    // Answers.
    DeviceInfo info{};         // copied out by getDeviceInfo
    bool updatesImage = false; // setDeviceProperty writes through to the caller's DeviceInfo
    int32_t taskRunning = 0;
    std::array<uint32_t, 4> usbIds{};
    std::function<void(int32_t volume)> onSetVolume; // called inside _SetVolum
};
