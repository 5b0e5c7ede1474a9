// The five timers of the main window; children of it, and stopped until it starts them.
#pragma once

#include <QTimer>

class WindowTimers {
public:
    explicit WindowTimers(QObject *window);

    QTimer reLayout; // once, 100 ms after construction
    QTimer rotation; // 100 ms: a step of the rotating sound field
    QTimer tick; // 100 ms: the tick counter, and whether a newer instance asked this one to end; one, to wake
                 // less often
    QTimer battery;    // 5 s: battery and connection state
    QTimer batteryNow; // once: when the window is up, and after devices came or went

    // Those that run from the pages' set-up on.
    void startForPages();
    void stopAll();
};
