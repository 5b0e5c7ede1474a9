// Buttons that show a state of the headset or the panel, told to screen readers as "checked". The state
// follows the settings: a click does not change it, only show() does.
#pragma once

#include <QAbstractButton>

namespace ShownState {

// From now on a click leaves the state as it is; it begins as off. Later calls do nothing.
void keep(QAbstractButton &button);

void show(QAbstractButton &button, bool on);

} // namespace ShownState
