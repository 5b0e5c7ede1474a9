// The smooth line through the equalizer's handles, on plain values.
#pragma once

#include <vector>

namespace EqCurveLine {

// Heights of a cubic Bezier segment's ends and control points, which stand at 0, 1/3, 2/3 and 1 of the way.
struct Segment {
    double start;
    double control1;
    double control2;
    double end;
};

// One segment between each two neighbours of evenly spaced points: the monotone cubic interpolation of
// Fritsch and Carlson (SIAM Journal on Numerical Analysis 17, 1980). The line has no corners and never leaves
// the range between two neighbours' heights. None for fewer than two points.
std::vector<Segment> through(const std::vector<double> &heights);

} // namespace EqCurveLine
