#include "pages/effects/ExclusiveGroup.h"

namespace ExclusiveGroup {

uint8_t SoundBlock::*switchOf(Effect effect) {
    switch (effect) {
    case Effect::VirtualSurround:
        return &SoundBlock::virtualSurroundOn;
    case Effect::SoundField:
        return &SoundBlock::soundFieldOn;
    case Effect::RoomEffect:
        return &SoundBlock::roomEffectOn;
    case Effect::Equalizer:
        break;
    }
    return &SoundBlock::equalizerOn;
}

bool isOn(const SoundBlock &block, Effect effect) {
    return switchedOn(block.*switchOf(effect));
}

void toggle(SoundBlock &block, Effect effect) {
    block.*switchOf(effect) ^= 1;
    if (!isOn(block, effect))
        return;
    for (const Effect other : kAllEffects) {
        if (other != effect)
            block.*switchOf(other) = 0;
    }
}

int rotationStep(const SoundBlock &block) {
    if (!isOn(block, Effect::SoundField))
        return 0;
    switch (static_cast<AngleMode>(block.fieldAngleMode)) {
    case AngleMode::Clockwise:
        return -1;
    case AngleMode::Anticlockwise:
        return 1;
    default:
        return 0;
    }
}

} // namespace ExclusiveGroup
