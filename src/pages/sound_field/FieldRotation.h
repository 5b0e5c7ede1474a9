// The turning of the sound field: its angle and the timer that moves it. GUI thread.
#pragma once

#include <QObject>
#include <QTimer>

class FieldRotation : public QObject {
    Q_OBJECT

public:
    // The timer belongs to the main window and ticks every 100 ms.
    explicit FieldRotation(QTimer &timer);

    void start(int step); // -1 or +1 per tick
    void hold();          // the field stays where it is
    void centre();        // the field stands still at angle 0

signals:
    // The new angle in degrees, counter-clockwise, in -360..360.
    void turned(float angle);

private:
    void tick();

    QTimer &timer_;
    float rotationAngle = 0;
    int rotationStep = 0;
    bool rotationActive = false;
    float rotationFactor = 1.0F; // degrees per step
};
