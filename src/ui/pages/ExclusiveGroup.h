// The four effects of which at most one is on, as rules on the sound block. ExclusiveEffects shows them.
#pragma once

#include "device/PropertyBlocks.h"

#include <array>
#include <cstdint>

enum class Effect { VirtualSurround, SoundField, RoomEffect, Equalizer };

constexpr std::array<Effect, 4> kAllEffects{Effect::VirtualSurround, Effect::SoundField, Effect::RoomEffect,
                                            Effect::Equalizer};

namespace ExclusiveGroup {

// The effect's switch in the block, 0/1.
uint8_t SoundBlock::*switchOf(Effect effect);

bool isOn(const SoundBlock &block, Effect effect);

// Flips the effect's switch; switched on, it switches the other three off. True when it is on now.
bool toggle(SoundBlock &block, Effect effect);

// -1 or +1 while the sound field is on and turning, else 0. Other angle modes than 1 and 2 leave it still.
int rotationStep(const SoundBlock &block);

} // namespace ExclusiveGroup
