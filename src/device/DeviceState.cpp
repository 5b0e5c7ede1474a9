#include "device/DeviceState.h"

#include "device/DeviceApi.h"
#include "helpers/LogHelper.h"

#include <cstring>

void DeviceState::saveType1Block() {
    system.headCopy = system.head;
    afterWrite(1, DeviceApi::writeBlock(info, system));
}

int32_t DeviceState::saveType2Block() {
    system.sound = sound;
    virtualSurroundOn = sound.virtualSurroundOn;
    return afterWrite(2, DeviceApi::writeBlock(info, sound));
}

void DeviceState::saveType3Block() {
    afterWrite(3, DeviceApi::writeBlock(info, extension));
}

// A slider's drag writes a hundred blocks: a failure is told once, until the result changes.
int32_t DeviceState::afterWrite(int type, int32_t result) {
    if (result < 0 && result != lastResult_)
        QOR_LOG(L"property block %d was not written: result %d", type, result);
    lastResult_ = result;
    emit written();
    return result;
}

void DeviceState::refreshSoundBlock() {
    if (std::memcmp(&sound, &info.sound, sizeof sound) == 0)
        return;
    sound = info.sound;
    virtualSurroundOn = sound.virtualSurroundOn;
    emit soundReplaced();
}
