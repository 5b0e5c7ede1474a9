#include "simulator/StartImage.h"

#include <algorithm>
#include <cstring>
#include <iterator>

namespace {

DeviceInfo plausibleImage() {
    DeviceInfo image{};

    SystemHead &system = image.system;
    system.micLevel = 80;
    system.monitorLevel = 30;
    system.noiseLevel = 50;
    system.voiceEffect = 1;
    system.noiseReductionOn = 1;
    system.micPageSwitch = 1;
    system.effectLevel = 50;

    SoundBlock &sound = image.sound;
    sound.pageSwitch = 1;
    sound.masterVolume = 60;
    sound.leftVolume = 60;
    sound.rightVolume = 60;
    sound.position = 1;
    sound.room = 2;
    sound.fieldAngleMode = 4; // centred
    sound.equalizerOn = 1;

    constexpr int8_t kGains[] = {5, 4, 2, 0, -1, 0, 1, 2, 4, 5};
    std::copy(std::begin(kGains), std::end(kGains), image.extension.gain);
    return image;
}

} // namespace

DeviceInfo makeStartImage(StartImage choice) {
    DeviceInfo image{};
    switch (choice) {
    case StartImage::Zero:
        return image;
    case StartImage::Full:
        std::memset(&image, 0xFF, sizeof image);
        return image;
    case StartImage::Plausible:
        break;
    }
    return plausibleImage();
}
