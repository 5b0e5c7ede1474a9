// Where the controls of the main window are: the form itself, laid out off the screen in the test's own
// process.
#pragma once

#include "resources/MainForm.h"
#include "ui_demoClass.h"

#include <stdexcept>
#include <windows.h>

class FormMap {
public:
    FormMap() {
        setUpMainForm(form_, window_);
        window_.setAttribute(Qt::WA_DontShowOnScreen);
        window_.setWindowFlags(Qt::FramelessWindowHint);
        for (QWidget *hidden : {form_.bt_y1, form_.bt_y5, form_.bt_y7, form_.bt_y10})
            hidden->hide();
        window_.show();
        window_.layout()->activate();
    }

    // Centre of the control in the main window. Shows the control's page first, as the panel does.
    POINT centreOf(const char *objectName) {
        auto *widget = window_.findChild<QWidget *>(objectName);
        if (!widget)
            throw std::invalid_argument(objectName);
        for (QWidget *page = widget; page != nullptr; page = page->parentWidget()) {
            if (form_.stackedWidget->indexOf(page) >= 0)
                form_.stackedWidget->setCurrentWidget(page);
        }
        const QPoint centre = widget->mapTo(&window_, widget->rect().center());
        return {centre.x(), centre.y()};
    }

private:
    QMainWindow window_;
    Ui::demoClass form_;
};
