// The tip shown at start-up when the registry value "isStartShow" asks for it.
#pragma once

#include <QWidget>

// Returns when the tip has been closed; runs its own event loop, so the application's need not run yet.
void ShowStartTip(QWidget *mainWindow);
