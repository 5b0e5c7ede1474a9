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

    DeviceRecorder &recorder;
    DeviceState device;
    VolumeFlags volume;
    InterfaceLanguage language;
    QMainWindow window;
    Ui::demoClass form;
};
