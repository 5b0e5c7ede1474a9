// Where the controls of the main window are: the form itself, laid out off the screen in the test's own
// process.
#pragma once

#include <memory>
#include <QMainWindow>
#include <windows.h>

class FormMap {
public:
    FormMap();
    ~FormMap();

    // Centre of the control in the main window. Shows the control's page first, as the panel does.
    POINT centreOf(const char *objectName);

private:
    QWidget &control(const char *objectName);

    std::unique_ptr<QMainWindow> window_;
};
