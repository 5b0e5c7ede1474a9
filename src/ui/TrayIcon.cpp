#include "ui/TrayIcon.h"

#include "helpers/ProductSettings.h"
#include "ui/ProcessEnd.h"

#include <QAction>
#include <QMenu>

namespace {

bool createdInThisProcess = false;

} // namespace

TrayIcon::TrayIcon(QWidget &mainWindow) : QObject(&mainWindow), mainWindow_(mainWindow) {}

void TrayIcon::show() {
    if (createdInThisProcess)
        return;
    createdInThisProcess = true;
    create();
}

void TrayIcon::create() {
    auto *menu = new QMenu(&mainWindow_);
    menu->setStyleSheet(QStringLiteral("background: #c0c0c0;"));
    auto *exitAction = new QAction(QStringLiteral("exit"), menu);
    menu->addAction(exitAction);
    connect(exitAction, &QAction::triggered, this, [this] { endProcess(&mainWindow_); });

    auto *icon = new QSystemTrayIcon(&mainWindow_);
    icon->setIcon(QIcon(QStringLiteral(":/demo/demo.ico")));
    icon->setContextMenu(menu);
    icon->setToolTip(QString::fromStdWString(ProductSettings::productDisplayName()));
    icon->setVisible(true);
    connect(icon, &QSystemTrayIcon::activated, this, &TrayIcon::activated);
}

// A double click only shows the window: a minimised one stays minimised.
void TrayIcon::activated(QSystemTrayIcon::ActivationReason reason) {
    if (reason == QSystemTrayIcon::DoubleClick) {
        mainWindow_.show();
    } else if (reason == QSystemTrayIcon::Trigger) {
        if (mainWindow_.isVisible() && !mainWindow_.isMinimized())
            return;
        mainWindow_.showNormal();
        mainWindow_.activateWindow();
    }
}
