// The turning of the sound field: its angle and the timer that moves it. GUI thread.
#pragma once

#include <QTimer>

class FieldRotation {
public:
    // The timer belongs to the main window and ticks every 100 ms.
    explicit FieldRotation(QTimer &timer) : timer_(timer) {}

    void start(int step); // -1 or +1 per tick
    void hold();          // the field stays where it is
    void centre();        // the field stands still at angle 0

    // One tick: turns the field while the rotation is active; false otherwise.
    bool advance();

    // Degrees, counter-clockwise, in -360..360.
    float angle() const { return rotationAngle; }
    bool isActive() const { return rotationActive; }

private:
    QTimer &timer_;
    float rotationAngle = 0;
    int rotationStep = 0;
    bool rotationActive = false;
    float rotationFactor = 1.0F; // degrees per step
};
