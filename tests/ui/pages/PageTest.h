// A page under test: the whole form in a plain window, the blocks, and the recorder in place of the device
// library. The test fills `device`, constructs its page controller from context(), and then works the form's
// controls.
#pragma once

#include "support/DeviceRecorder.h"
#include "ui/pages/PageContext.h"
#include "ui_demoClass.h"

#include <gtest/gtest.h>

#include <QMainWindow>

class PageTest : public testing::Test {
protected:
    PageTest();

    PageContext context() { return {window, form, device, volume, language}; }

    // Lets queued signals and posted events arrive.
    static void settle();

    // The calls of the device library since the last time.
    std::vector<std::string> takeCalls();

    // Whether the widget's own style sheet holds the text.
    static bool shows(const QWidget *widget, const char *text);

    // Of the `count` buttons named by the pattern, number `marked` (0: none) shows the mark.
    void expectMarked(const char *pattern, int count, int marked,
                      const char *mark = "border: 1px solid #ef0303;",
                      const char *none = "border: none;") const;

    DeviceRecorder &recorder;
    DeviceState device;
    VolumeFlags volume;
    InterfaceLanguage language;
    QMainWindow window;
    Ui::demoClass form;
};
