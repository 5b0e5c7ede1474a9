#include "device/DeviceState.h"

#include "device/DeviceApi.h"

namespace {

void tell(const std::function<void()> &listener) {
    if (listener)
        listener();
}

} // namespace

void DeviceState::saveType1Block() {
    system.headCopy = system.head;
    DeviceApi::writeBlock(info, DeviceApi::BlockType::System, &system);
    tell(written);
}

int32_t DeviceState::saveType2Block() {
    system.sound = sound;
    const int32_t result = DeviceApi::writeBlock(info, DeviceApi::BlockType::Sound, &sound);
    tell(written);
    return result;
}

void DeviceState::saveType3Block() {
    DeviceApi::writeBlock(info, DeviceApi::BlockType::Extension, &extension);
    tell(written);
}

void DeviceState::refreshSoundBlock() {
    sound = info.sound;
}
