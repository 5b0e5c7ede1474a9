// The four effects of which at most one is on, as rules on the sound block. ExclusiveEffects shows them.
#pragma once

#include "device/PropertyBlocks.h"

#include <array>
#include <cstdint>

enum class Effect { VirtualSurround, SoundField, RoomEffect, Equalizer };

constexpr std::array<Effect, 4> kAllEffects{Effect::VirtualSurround, Effect::SoundField, Effect::RoomEffect,
                                            Effect::Equalizer};

// How the sound field stands or turns, as the block stores it.
enum class AngleMode : uint8_t { Clockwise = 1, Anticlockwise = 2, Held = 3, Centred = 4 };

namespace ExclusiveGroup {

// The effect's switch in the block, 0/1.
uint8_t SoundBlock::*switchOf(Effect effect);

bool isOn(const SoundBlock &block, Effect effect);

// Flips the effect's switch; switched on, it switches the other three off.
void toggle(SoundBlock &block, Effect effect);

// -1 (clockwise) or +1 while the sound field is on and turning, else 0, also for an unknown angle mode.
int rotationStep(const SoundBlock &block);

} // namespace ExclusiveGroup
