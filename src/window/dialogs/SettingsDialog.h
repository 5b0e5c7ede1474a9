// The settings dialog: interface language, tray icon, start tip. Made when it is opened, gone when it is
// closed. One object, owned by the main window.
#pragma once

#include "helpers/InterfaceLanguage.h"
#include "window/dialogs/DialogState.h"
#include "window/language/Translation.h"

#include <optional>
#include <QWidget>

namespace Ui {
class dlgsetting;
}

class SettingsDialog {
public:
    SettingsDialog(QWidget &mainWindow, InterfaceLanguage &language, DialogState &state,
                   Translation &translation);

    // Returns when the dialog has been closed, or at once when a dialog is open already.
    void OpenSettingsDialog();

    // True when closing the main window shall hide it behind the tray icon: the registry value
    // "isAddSysicon", where a missing one counts as yes.
    bool hidesToTray() const;

private:
    void fill(Ui::dlgsetting &form) const;
    // The Confirm button: stores the choices and applies the language. A choice that cannot be stored
    // (logged) still holds for this run.
    void SaveSettings(const Ui::dlgsetting &form);

    QWidget &mainWindow_;
    InterfaceLanguage &language_;
    DialogState &state_;
    Translation &translation_;
    std::optional<bool> unsavedTrayChoice_;
};
