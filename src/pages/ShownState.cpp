#include "pages/ShownState.h"

#include <QVariant>

namespace {

constexpr char kState[] = "shownState";

} // namespace

namespace ShownState {

void keep(QAbstractButton &button) {
    if (button.property(kState).isValid())
        return;
    button.setProperty(kState, false);
    button.setCheckable(true);
    const auto restore = [&button] { button.setChecked(button.property(kState).toBool()); };
    QObject::connect(&button, &QAbstractButton::toggled, &button, restore);
}

void show(QAbstractButton &button, bool on) {
    keep(button);
    button.setProperty(kState, on);
    button.setChecked(on);
}

} // namespace ShownState
