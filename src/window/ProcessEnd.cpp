#include "window/ProcessEnd.h"

#include <windows.h>

void endProcess(QWidget *mainWindow) {
    delete mainWindow;
    endProcessAtOnce();
}

void endProcessAtOnce() {
    ExitProcess(0);
}
