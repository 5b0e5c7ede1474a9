// The ends of the process that do not pass through the event loop.
#pragma once

#include <QWidget>

// Destroys the main window, which shuts the device down, and ends the process with exit code 0. Other threads
// end wherever they are.
[[noreturn]] void endProcess(QWidget *mainWindow);

// The same while the main window is still being built: it is not destroyed.
[[noreturn]] void endProcessAtOnce();
