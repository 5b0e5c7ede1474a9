#include "window/screens/ScreenScale.h"

#include "window/screens/WindowFit.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double kStepsPerUnit = 20;

} // namespace

double chooseScale(const ScreenNumbers &screen) {
    const double own = screen.dpi / 96.0;
    const double fitting = std::min(screen.workWidth / static_cast<double>(WindowFit::kFullWidth),
                                    screen.workHeight / static_cast<double>(WindowFit::kFullHeight));
    const double scale = own <= fitting ? own : std::floor(fitting * kStepsPerUnit) / kStepsPerUnit;
    return std::max(scale, 1.0);
}
