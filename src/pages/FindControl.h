// Controls that come in numbered groups are found by name.
#pragma once

#include <QWidget>

// The control of that class and object name in the window. A form without it is a fault of the build: the
// program says the name and ends.
template<typename Control>
Control &findControl(const QWidget &window, const QString &name) {
    if (auto *control = window.findChild<Control *>(name))
        return *control;
    qFatal("the form has no %s named %s", Control::staticMetaObject.className(), qUtf8Printable(name));
}
