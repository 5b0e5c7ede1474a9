// The main window's form on a recorded device, for the one page that a test is about.
#pragma once

#include "device/DeviceInitialisation.h"
#include "helpers/ProductSettings.h"
#include "helpers/Registry.h"
#include "pages/PageContext.h"
#include "resources/MainForm.h"
#include "support/DeviceRecorder.h"
#include "ui_demoClass.h"

#include <gtest/gtest.h>
#include <QMainWindow>

class PageTest : public testing::Test {
protected:
    PageTest() {
        recorder.reset();
        if (!Registry::KeyExists(ProductSettings::kProductKey))
            Registry::CreateKey(ProductSettings::kProductKey);
        setUpMainForm(form, window);
    }

    // The settings that the recorder holds, as the panel reads them at its start.
    void readDevice(const std::wstring &curveFile = L"C:\\windows\\temp\\eqs.bin") {
        DeviceInitialisation::readDevice(device, curveFile);
        recorder.calls.clear();
    }

    DeviceRecorder &recorder = DeviceRecorder::instance();
    QMainWindow window;
    Ui::demoClass form;
    DeviceState device;
    VolumeFlags volume;
    InterfaceLanguage language;
    const PageContext context{window, form, device, volume, language};
};
