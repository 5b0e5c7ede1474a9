#include "window/TrayIcon.h"

#include "helpers/ProductSettings.h"
#include "window/ProcessEnd.h"

#include <QAction>
#include <QCoreApplication>
#include <QMenu>

namespace {

constexpr wchar_t kHidingTold[] = L"hidingTold"; // DWORD, nonzero: the user knows where the window goes

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

void TrayIcon::notify(const QString &text) {
    if (icon_)
        icon_->showMessage(QString::fromStdWString(ProductSettings::productDisplayName()), text,
                           icon_->icon());
}

void TrayIcon::notifyOfHiding() {
    if (ProductSettings::readDword(kHidingTold, ProductSettings::kUserKey).value_or(0) != 0)
        return;
    notify(QCoreApplication::translate("demo", "控制面板仍在后台运行，单击此图标可重新打开。"));
    ProductSettings::writeDword(kHidingTold, 1, ProductSettings::kUserKey);
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
