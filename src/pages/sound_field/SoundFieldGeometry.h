// Where things stand on the sound-field page, on plain values. Pixels, y grows downwards.
#pragma once

#include <cstdint>
#include <vector>

namespace SoundField {

struct Point {
    int x;
    int y;
};

struct Size {
    int width;
    int height;
};

struct PointF {
    double x;
    double y;
};

constexpr double kSpeakerRadius = 110; // of the circle on which the drawing's speakers stand

// Speaker levels in dB, as the sliders and the step buttons keep them.
constexpr int kMinLevel = -13;
constexpr int kMaxLevel = 4;

// One step down or up for each level, kept in range on the side it moves to.
int8_t stepLevel(int8_t level, int step);

// Nearest integer, halves upwards.
int roundHalfUp(double value);

// Top left of a speaker's marker. At the lowest level it stands 1.5 times as far from the centre as its
// reference point, on the same ray; at the highest it stands on the centre.
Point markerPosition(Point centre, Point reference, Size marker, int value, int minimum, int maximum);

// Offset from the centre of the point at `degrees`, counter-clockwise from the right, on a circle.
PointF onCircle(float degrees, double radius);

// `count` points evenly spaced on the circle around `centre` that goes through `through`, the first to the
// right of the centre and the others following clockwise; none for a count below 1.
std::vector<PointF> pointRing(PointF centre, PointF through, int count);

} // namespace SoundField
