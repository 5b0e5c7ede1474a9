#include "window/SystemEvents.h"

#include <QCoreApplication>

#include <dbt.h>

SystemEvents::SystemEvents() {
    QCoreApplication::instance()->installNativeEventFilter(this);
}

SystemEvents::~SystemEvents() = default; // removes the filter

void SystemEvents::watchHidDevices(const QWidget &window) {
    if (hidNotification_)
        return;
    hidNotification_ = notifyOfHidDevices(reinterpret_cast<HWND>(window.winId()));
    emit devicesChanged(); // whatever came before the registration
}

// Both messages about the session go to all top-level windows, hidden ones and Qt's own, too (Windows'
// documentation of WM_QUERYENDSESSION). Qt would close the visible windows while the user is still asked, and
// do nothing at the end (QWindowsContext::windowsProc, QGuiApplicationPrivate::commitData in Qt 5.15).
bool SystemEvents::nativeEventFilter(const QByteArray &eventType, void *message, long *result) {
    if (eventType != "windows_generic_MSG")
        return false;
    const MSG &msg = *static_cast<const MSG *>(message);
    switch (msg.message) {
    case WM_QUERYENDSESSION:
        *result = TRUE;
        return true;
    case WM_ENDSESSION:
        *result = 0;
        if (msg.wParam) // else another program has kept the session alive
            emit sessionEnds();
        return true;
    case WM_DEVICECHANGE:
        if (msg.wParam == DBT_DEVNODES_CHANGED || msg.wParam == DBT_DEVICEARRIVAL ||
            msg.wParam == DBT_DEVICEREMOVECOMPLETE)
            emit devicesChanged();
        return false;
    default:
        return false;
    }
}
