#include "ui/WindowTimers.h"

WindowTimers::WindowTimers(QObject *window)
    : handover(window), reLayout(window), rotation(window), tick(window), battery(window),
      firstBattery(window) {
    handover.setInterval(100);
    reLayout.setInterval(100);
    reLayout.setSingleShot(true);
    rotation.setInterval(100);
    tick.setInterval(100);
    battery.setInterval(5000);
    firstBattery.setInterval(0);
    firstBattery.setSingleShot(true);
}

void WindowTimers::stopAll() {
    for (QTimer *timer : {&handover, &reLayout, &rotation, &tick, &battery, &firstBattery})
        timer->stop();
}
