// The main window on a screen that is lower than its form.
#pragma once

class QWidget;
namespace Ui {
class demoClass;
}

// Lays the window out for the height in logical pixels; where the whole form fits, nothing is touched. Once,
// before the window is shown.
void fitToHeight(QWidget &window, const Ui::demoClass &form, int availableHeight);
