#include "hid/DeviceNotification.h"

#include "helpers/LogHelper.h"
#include "hid/HidHandles.h"

#include <dbt.h>

UniqueDeviceNotification notifyOfHidDevices(HWND window) {
    DEV_BROADCAST_DEVICEINTERFACE_W filter{};
    filter.dbcc_size = sizeof filter;
    filter.dbcc_devicetype = DBT_DEVTYP_DEVICEINTERFACE;
    HidD_GetHidGuid(&filter.dbcc_classguid);
    UniqueDeviceNotification notification(
        RegisterDeviceNotificationW(window, &filter, DEVICE_NOTIFY_WINDOW_HANDLE));
    if (!notification)
        QOR_LOG(L"RegisterDeviceNotification failed: error %lu", GetLastError());
    return notification;
}
