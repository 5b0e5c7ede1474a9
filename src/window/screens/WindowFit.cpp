#include "window/screens/WindowFit.h"

#include <algorithm>

namespace {

constexpr int kLeastHeight = 660;
constexpr int kLayoutHeight = 863; // of the central widget; the rest is a black edge

constexpr int kTopBar = 69;
constexpr int kPage = 513;
constexpr int kStrip = 146;
constexpr int kMargin = 20;
constexpr int kLeastMargin = 8;
constexpr int kMargins = 3; // above, between and below
constexpr int kMostInset = 12;

constexpr int kNavigationEnd = 811;
constexpr int kMicrophoneLine = 456;
constexpr int kMicrophoneTop = 480;
constexpr int kOtherTop = 700;
constexpr int kUpgradeTop = 66;
// How far the empty places can shrink: above the second and the third group, and where the third has a button
// that is not offered.
constexpr int kAboveMicrophoneLine = 60;
constexpr int kAboveMicrophone = kAboveMicrophoneLine + 12;
constexpr int kAboveOther = 42;
constexpr int kAboveUpgrade = 30;
constexpr int kEmpty = kAboveMicrophone + kAboveOther + kAboveUpgrade;

} // namespace

WindowFit fitWindow(int availableHeight) {
    const int height = std::clamp(availableHeight, kLeastHeight, WindowFit::kFullHeight);
    const int layout = std::min(height, kLayoutHeight);
    const int around = layout - kTopBar - kPage - kStrip;
    const int lacking = std::max(0, kMargins * kLeastMargin - around);
    const int missing = std::clamp(kNavigationEnd - layout, 0, kEmpty);
    const auto share = [missing](int place) { return missing * place / kEmpty; };
    return {height,
            std::clamp(around / kMargins, kLeastMargin, kMargin),
            std::min((lacking + 1) / 2, kMostInset),
            lacking > 2 * kMostInset,
            kMicrophoneLine - share(kAboveMicrophoneLine),
            kMicrophoneTop - share(kAboveMicrophone),
            kOtherTop - share(kAboveMicrophone + kAboveOther),
            kUpgradeTop - share(kAboveUpgrade)};
}
