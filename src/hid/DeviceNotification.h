// Windows' messages about HID devices that come and go.
#pragma once

#include "helpers/UniqueResource.h"

#include <windows.h>

struct DeviceNotificationTraits {
    using Type = HDEVNOTIFY;
    static Type empty() noexcept { return nullptr; }
    static void release(Type notification) noexcept { UnregisterDeviceNotification(notification); }
};
using UniqueDeviceNotification = UniqueResource<DeviceNotificationTraits>;

// From now on the window gets WM_DEVICECHANGE for every HID interface that arrives or is removed; empty, and
// logged, when Windows refuses.
UniqueDeviceNotification notifyOfHidDevices(HWND window);
