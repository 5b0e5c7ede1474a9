// What every page controller is built from. The objects live as long as the main window, which owns them.
#pragma once

#include "device/DeviceState.h"
#include "helpers/InterfaceLanguage.h"
#include "pages/VolumeFlags.h"

#include <QWidget>

namespace Ui {
class demoClass;
}

struct PageContext {
    QWidget &window; // the main window: finds controls by name pattern, parent of dialogs
    Ui::demoClass &form;
    DeviceState &device;
    VolumeFlags &volume;
    InterfaceLanguage &language;
};
