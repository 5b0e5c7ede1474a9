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
    // Takes it away, where the process ends without the main window's destruction.
    void remove();

    // From now on a click on the icon shows the main window; before, there is nothing to show.
    void windowIsUp() { windowIsUp_ = true; }

private:
    void create();
    void activated(QSystemTrayIcon::ActivationReason reason);

    QWidget &mainWindow_;
    QSystemTrayIcon *icon_ = nullptr;
    bool windowIsUp_ = false;
};
