#include "pages/equalizer/EqCurveLine.h"

#include <algorithm>
#include <cmath>

namespace EqCurveLine {

namespace {

// Of the two slopes at an inner point: none at a peak, a valley or a level, else their mean, which at three
// times the flatter one is as steep as the line may be without overshoot.
double slopeBetween(double before, double after) {
    if (before * after <= 0)
        return 0;
    const double limit = 3 * std::min(std::abs(before), std::abs(after));
    return std::copysign(std::min(std::abs(before + after) / 2, limit), before);
}

} // namespace

std::vector<Segment> through(const std::vector<double> &heights) {
    if (heights.size() < 2)
        return {};
    std::vector<double> rises;
    for (size_t i = 0; i + 1 < heights.size(); ++i)
        rises.push_back(heights[i + 1] - heights[i]);
    std::vector<double> slopes{rises.front()};
    for (size_t i = 0; i + 1 < rises.size(); ++i)
        slopes.push_back(slopeBetween(rises[i], rises[i + 1]));
    slopes.push_back(rises.back());

    std::vector<Segment> segments;
    for (size_t i = 0; i < rises.size(); ++i)
        segments.push_back(
            {heights[i], heights[i] + slopes[i] / 3, heights[i + 1] - slopes[i + 1] / 3, heights[i + 1]});
    return segments;
}

} // namespace EqCurveLine
