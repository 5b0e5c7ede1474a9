#include "resources/MainForm.h"

#include "ui_demoClass.h"

void setUpMainForm(Ui::demoClass &form, QMainWindow &window) {
    form.setupUi(&window);
}

void retranslateMainForm(Ui::demoClass &form, QMainWindow &window) {
    form.retranslateUi(&window);
}
