// The icon in the notification area, created at most once per process and kept until its end.
#pragma once

#include <QSystemTrayIcon>
#include <QWidget>

class TrayIcon : public QObject {
    Q_OBJECT

public:
    explicit TrayIcon(QWidget &mainWindow);

    // Creates the icon; later calls do nothing.
    void show();

private:
    void create();
    void activated(QSystemTrayIcon::ActivationReason reason);

    QWidget &mainWindow_;
};
