// The version dialog of the top bar's about button.
#pragma once

#include "helpers/InterfaceLanguage.h"
#include "window/dialogs/DialogState.h"

#include <QWidget>

// Returns when the dialog has been closed, or at once when this or the settings dialog is open already.
void ShowVersionDialog(QWidget &mainWindow, const InterfaceLanguage &language, DialogState &state);
