// The main window's controls. What Designer's tool generates for them takes the compiler ten seconds, so it
// is compiled here, once.
#pragma once

class QMainWindow;
namespace Ui {
class demoClass;
}

void setUpMainForm(Ui::demoClass &form, QMainWindow &window);
void retranslateMainForm(Ui::demoClass &form, QMainWindow &window);
