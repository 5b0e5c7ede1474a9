// Equalizer curves as players share them: text in the format of Equalizer APO's configuration files, which
// many equalizers and collections of headphone corrections write. Plain values.
#pragma once

#include "device/PropertyBlocks.h"

#include <array>
#include <optional>
#include <string>
#include <string_view>

namespace EqCurveText {

using Gains = std::array<int8_t, sizeof(ExtBlock::gain)>; // dB, -20..20, lowest band first

// Gains of a text that cannot be taken are missing; badLine is then the first line (from 1) that is wrong, or
// 0 when no line holds a curve.
struct Parsed {
    std::optional<Gains> gains;
    int badLine = 0;
};

// The sum of all "GraphicEQ:" lines (linear in dB over the logarithm of the frequency, level outside) and of
// the filters that are on (peaks and shelves), at the ten bands, rounded and clamped. "Preamp:" and lines of
// other kinds are passed over, for the headset has no such control; a filter of another kind or for one
// channel alone is wrong.
Parsed parse(std::string_view text);

// One "GraphicEQ:" line with its line end.
std::string graphicEq(const ExtBlock &block);

} // namespace EqCurveText
