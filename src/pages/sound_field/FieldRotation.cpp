#include "pages/sound_field/FieldRotation.h"

#include <cmath>

namespace {

constexpr float kFullTurn = 360;

} // namespace

FieldRotation::FieldRotation(QTimer &timer) : timer_(timer) {
    connect(&timer_, &QTimer::timeout, this, &FieldRotation::tick);
}

void FieldRotation::start(int step) {
    timer_.stop();
    rotationStep = step;
    rotationActive = true;
    timer_.start();
}

void FieldRotation::hold() {
    timer_.stop();
    rotationStep = 0;
    rotationActive = false;
}

void FieldRotation::centre() {
    hold();
    rotationAngle = 0;
    emit turned(rotationAngle);
}

void FieldRotation::tick() {
    if (!rotationActive)
        return;
    rotationAngle += static_cast<float>(rotationStep) * rotationFactor;
    if (std::abs(rotationAngle) >= kFullTurn) // a field that turns for weeks must not run out of digits
        rotationAngle = std::fmod(rotationAngle, kFullTurn);
    emit turned(rotationAngle);
}
