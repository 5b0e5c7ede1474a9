// The twelve fixed equalizer curves, in the order of the buttons btn_jhq0..btn_jhq11.
#pragma once

#include "device/PropertyBlocks.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <optional>

namespace EqPresets {

constexpr int kCount = 12;
constexpr int kDefault = 11; // flat

using Gains = std::array<int8_t, sizeof(ExtBlock::gain)>; // dB, lowest band first

constexpr std::array<Gains, kCount> kGains{{
    {-2, 1, 4, 6, -2, 1, 3, 2, -3, -1},
    {-6, -6, -6, 6, 0, 6, 0, -1, 0, -6},
    {-3, -3, 6, 4, 6, 2, 3, 2, 0, -5},
    {-4, 1, -5, -5, -5, 4, 9, 7, -5, -6},
    {-2, -3, 1, 3, 1, 1, 1, 0, 0, -1},
    {11, 8, 4, 5, -3, 3, 8, -5, 3, 6},
    {3, -3, -3, -5, 3, 3, 3, 5, 6, 4},
    {1, 1, 2, 4, 1, 1, 0, 1, 0, -1},
    {6, 6, 3, -1, 0, 0, 1, 2, 1, 0},
    {5, 6, 3, -2, -1, -1, 2, 4, 5, 3},
    {-3, -2, -1, 0, 2, 3, 2, 1, 0, 1},
    {0, 0, 0, 0, 0, 0, 0, 0, 0, 0},
}};

// Index of the row with these gains.
inline std::optional<size_t> find(const ExtBlock &block) {
    for (size_t i = 0; i < kGains.size(); ++i) {
        if (std::equal(kGains[i].begin(), kGains[i].end(), block.gain))
            return i;
    }
    return std::nullopt;
}

} // namespace EqPresets
