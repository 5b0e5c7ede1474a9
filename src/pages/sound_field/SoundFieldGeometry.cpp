#include "pages/sound_field/SoundFieldGeometry.h"

#include <algorithm>
#include <cmath>

namespace SoundField {

namespace {

constexpr float kRadiansPerDegreeF = 0.017453292F;
constexpr double kRadiansPerDegree = 0.017453292519943295;
constexpr double kReach = 1.5; // distance of the lowest level, in reference distances

} // namespace

int8_t stepLevel(int8_t level, int step) {
    const int next = level + step;
    return static_cast<int8_t>(step < 0 ? std::max(next, kMinLevel) : std::min(next, kMaxLevel));
}

int roundHalfUp(double value) {
    return static_cast<int>(std::floor(value + 0.5));
}

Point markerPosition(Point centre, Point reference, Size marker, int value, int minimum, int maximum) {
    const int fx = roundHalfUp(kReach * (centre.x - reference.x));
    const int fy = roundHalfUp(kReach * (centre.y - reference.y));
    const double t = maximum > minimum ? static_cast<double>(value - minimum) / (maximum - minimum) : 0.0;
    return {centre.x - fx - marker.width / 2 + roundHalfUp(fx * t),
            centre.y - fy - marker.height / 2 + roundHalfUp(fy * t)};
}

PointF onCircle(float degrees, double radius) {
    const float radians = degrees * kRadiansPerDegreeF;
    return {radius * std::cos(radians), -radius * std::sin(radians)};
}

std::vector<PointF> pointRing(PointF centre, PointF through, int count) {
    std::vector<PointF> ring;
    const double radius = std::hypot(through.x - centre.x, through.y - centre.y);
    for (int i = 0; i < count; ++i) {
        const double radians = i * 360.0 / count * kRadiansPerDegree;
        ring.push_back({centre.x + radius * std::cos(radians), centre.y + radius * std::sin(radians)});
    }
    return ring;
}

} // namespace SoundField
