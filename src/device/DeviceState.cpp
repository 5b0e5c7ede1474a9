#include "device/DeviceState.h"

#include "device/DeviceApi.h"

void DeviceState::saveType1Block() {
    system.headCopy = system.head;
    DeviceApi::writeBlock(info, DeviceApi::BlockType::System, &system);
}

int32_t DeviceState::saveType2Block() {
    system.sound = sound;
    return DeviceApi::writeBlock(info, DeviceApi::BlockType::Sound, &sound);
}

void DeviceState::saveType3Block() {
    DeviceApi::writeBlock(info, DeviceApi::BlockType::Extension, &extension);
}

void DeviceState::refreshSoundBlock() {
    sound = info.sound;
}
