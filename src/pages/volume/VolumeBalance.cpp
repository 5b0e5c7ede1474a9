#include "pages/volume/VolumeBalance.h"

#include <algorithm>

namespace VolumeBalance {

namespace {

constexpr int kDeadBandLimit = 60;
constexpr int kDeadBandWidth = 1;

int8_t clamped(int level) {
    return static_cast<int8_t>(std::clamp(level, 0, 100));
}

} // namespace

Levels followMaster(Levels levels, int8_t previousMaster) {
    const auto delta =
        static_cast<int8_t>(levels.master - previousMaster); // wraps: the device counts in 8 bits
    if (levels.left > levels.right)
        return {levels.master, levels.master, clamped(levels.right + delta)};
    if (levels.left < levels.right)
        return {levels.master, clamped(levels.left + delta), levels.master};
    return {levels.master, levels.master, levels.master};
}

Levels followChannel(Levels levels, Channel moved, bool locked) {
    if (locked) {
        const Channel other = moved == &Levels::left ? &Levels::right : &Levels::left;
        levels.*other = clamped(levels.*moved);
        levels.master = levels.*moved;
    } else {
        levels.master = std::max(levels.left, levels.right);
    }
    return levels;
}

bool isNews(int systemVolume, int master) {
    const bool nearMaster =
        systemVolume >= master - kDeadBandWidth && systemVolume <= master + kDeadBandWidth;
    return !(systemVolume < kDeadBandLimit && nearMaster);
}

int percentOfScalar(float scalar) {
    const double percent = static_cast<double>(scalar) * 100.0;
    if (!(percent > 0.0)) // NaN as well
        return 0;
    return static_cast<int>(std::min(percent, 100.0));
}

} // namespace VolumeBalance
