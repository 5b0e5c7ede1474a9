#include "pages/lighting/LedReport.h"

#include <algorithm>

namespace {

constexpr uint8_t kLedReportCode = 0x0A;
constexpr int kBrightest = 255;

uint8_t lowByte(int value) {
    return static_cast<uint8_t>(value & 0xFF);
}

} // namespace

std::array<uint8_t, 64> makeLedReport(const LedSettings &settings) {
    return {kLedReportCode,
            lowByte(settings.mode),
            lowByte(settings.level),
            lowByte(std::min(settings.red, kBrightest)),
            lowByte(std::min(settings.green, kBrightest)),
            lowByte(std::min(settings.blue, kBrightest))};
}

std::string describeLedReport(const LedSettings &settings) {
    std::string text = std::to_string(settings.mode) + "," + std::to_string(settings.level);
    for (const int value : {settings.red, settings.green, settings.blue})
        text += "," + std::to_string(std::min(value, kBrightest));
    return text;
}
