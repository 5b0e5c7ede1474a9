// What Windows tells every window of the process: that the session ends, and that devices came or went. GUI
// thread.
#pragma once

#include "hid/DeviceNotification.h"

#include <QAbstractNativeEventFilter>
#include <QWidget>

class SystemEvents : public QObject, public QAbstractNativeEventFilter {
    Q_OBJECT

public:
    SystemEvents();
    ~SystemEvents() override;

    // Has the window, which has its native window by now, told of HID devices; once.
    void watchHidDevices(const QWidget &window);

signals:
    // Log-off, shutdown or restart: the receivers have some seconds before Windows ends the process.
    void sessionEnds();
    // Several times for one change.
    void devicesChanged();

private:
    bool nativeEventFilter(const QByteArray &eventType, void *message, long *result) override;

    UniqueDeviceNotification hidNotification_;
};
