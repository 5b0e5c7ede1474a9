#include "window/WindowTimers.h"

WindowTimers::WindowTimers(QObject *window)
    : reLayout(window), rotation(window), tick(window), battery(window), batteryNow(window) {
    reLayout.setInterval(100);
    reLayout.setSingleShot(true);
    rotation.setInterval(100);
    tick.setInterval(100);
    battery.setInterval(5000);
    batteryNow.setInterval(0);
    batteryNow.setSingleShot(true);
}

void WindowTimers::startForPages() {
    tick.start();
    battery.start();
    batteryNow.start(); // fires when the event loop first runs: the window is up then
}

void WindowTimers::stopAll() {
    for (QTimer *timer : {&reLayout, &rotation, &tick, &battery, &batteryNow})
        timer->stop();
}
