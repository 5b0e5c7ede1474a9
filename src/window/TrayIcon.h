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

    // A notice beside the icon; nothing while there is no icon.
    void notify(const QString &text);

    // Says, once per user, that the window that was just hidden is still there.
    void notifyOfHiding();

private:
    void create();
    void activated(QSystemTrayIcon::ActivationReason reason);

    QWidget &mainWindow_;
    QSystemTrayIcon *icon_ = nullptr; // child of the main window
    bool windowIsUp_ = false;
};
