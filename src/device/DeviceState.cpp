#include "device/DeviceState.h"

#include "device/DeviceApi.h"

#include <cstring>

void DeviceState::saveType1Block() {
    system.headCopy = system.head;
    DeviceApi::writeBlock(info, system);
    emit written();
}

int32_t DeviceState::saveType2Block() {
    system.sound = sound;
    virtualSurroundOn = sound.virtualSurroundOn;
    const int32_t result = DeviceApi::writeBlock(info, sound);
    emit written();
    return result;
}

void DeviceState::saveType3Block() {
    DeviceApi::writeBlock(info, extension);
    emit written();
}

void DeviceState::refreshSoundBlock() {
    if (std::memcmp(&sound, &info.sound, sizeof sound) == 0)
        return;
    sound = info.sound;
    virtualSurroundOn = sound.virtualSurroundOn;
    emit soundReplaced();
}
