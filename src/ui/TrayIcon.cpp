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

    icon_ = new QSystemTrayIcon(&mainWindow_);
    icon_->setIcon(QIcon(QStringLiteral(":/demo/demo.ico")));
    icon_->setContextMenu(menu);
    icon_->setToolTip(QString::fromStdWString(ProductSettings::productDisplayName()));
    icon_->setVisible(true);
    connect(icon_, &QSystemTrayIcon::activated, this, &TrayIcon::activated);
}

void TrayIcon::remove() {
    if (icon_)
        icon_->hide();
}

// A double click only shows the window: a minimised one stays minimised.
void TrayIcon::activated(QSystemTrayIcon::ActivationReason reason) {
    if (!windowIsUp_)
        return;
    if (reason == QSystemTrayIcon::DoubleClick) {
        mainWindow_.show();
    } else if (reason == QSystemTrayIcon::Trigger) {
        if (mainWindow_.isVisible() && !mainWindow_.isMinimized())
            return;
        mainWindow_.showNormal();
        mainWindow_.activateWindow();
    }
}
