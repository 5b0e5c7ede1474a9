// Which of the main window's two dialogs is open. At most one is: while either is, neither opens again.
#pragma once

struct DialogState {
    bool settingsOpen = false;
    bool versionOpen = false;

    bool anyOpen() const { return settingsOpen || versionOpen; }
};
