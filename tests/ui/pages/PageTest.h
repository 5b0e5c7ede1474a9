// A page under test: the whole form in a plain window, the blocks, and the recorder in place of the device
// library. The test fills `device`, constructs its page from context(), and then works the form's controls.
#pragma once

#include "support/DeviceRecorder.h"
#include "ui/pages/PageContext.h"
#include "ui_demoClass.h"

#include <gtest/gtest.h>
#include <utility>

class PageTest : public testing::Test {
protected:
    PageTest() {
        recorder.reset();
        form.setupUi(&window);
    }

    PageContext context() { return {window, form, device, volume, language}; }

    // The calls of the device library since the last time.
    std::vector<std::string> takeCalls() { return std::exchange(recorder.calls, {}); }

    DeviceRecorder &recorder = DeviceRecorder::instance();
    DeviceState device;
    VolumeFlags volume;
    InterfaceLanguage language;
    QMainWindow window;
    Ui::demoClass form;
};
