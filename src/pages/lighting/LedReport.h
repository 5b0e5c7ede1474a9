// The LED report that sets the headset's light, and the page's fixed colours, on plain values.
#pragma once

#include <array>
#include <cstdint>
#include <string>

struct LedColour {
    uint8_t red, green, blue;
};

// In the order of the page's colour buttons.
constexpr std::array<LedColour, 7> kFixedColours{{
    {255, 0, 0},
    {255, 255, 0},
    {0, 255, 0},
    {0, 255, 255},
    {255, 0, 255},
    {0, 0, 255},
    {255, 255, 255},
}};

// What the controls show: mode is an index of the mode list, level 0..100. The colour values are whatever the
// fields hold: too large ones count as 255, while negative ones are sent as their low byte.
struct LedSettings {
    int mode, level;
    int red, green, blue;
};

std::array<uint8_t, 64> makeLedReport(const LedSettings &settings);

// "mode,level,red,green,blue" in decimal.
std::string describeLedReport(const LedSettings &settings);
