#include "window/dialogs/MakerActions.h"

#include "helpers/LogHelper.h"

#include <QCoreApplication>
#include <QDesktopServices>
#include <QMenu>
#include <QProcess>

QUrl makerWebSite() {
    return QUrl(QStringLiteral("https://www.qorsound.example/"));
}

void OpenMakerWebSite() {
    if (!QDesktopServices::openUrl(makerWebSite()))
        QOR_LOG(L"the maker's web site cannot be opened");
}

void OpenRecordingSettings() {
    // https://learn.microsoft.com/windows/win32/shell/executing-control-panel-items: item,,tab; tab 1 is
    // Recording.
    if (!QProcess::startDetached(QStringLiteral("control.exe"), {QStringLiteral("mmsys.cpl,,1")}))
        QOR_LOG(L"control.exe cannot be started");
}

void addTopBarMenu(QWidget &topBar, std::function<void()> openWebSite,
                   std::function<void()> openRecordingSettings) {
    topBar.setContextMenuPolicy(Qt::CustomContextMenu);
    const auto showMenu = [bar = &topBar, openWebSite = std::move(openWebSite),
                           openRecordingSettings = std::move(openRecordingSettings)](const QPoint &position) {
        auto *menu = new QMenu(bar);
        menu->setAttribute(Qt::WA_DeleteOnClose);
        menu->addAction(QCoreApplication::translate("demo", "访问官方网站"), bar, openWebSite);
        menu->addAction(QCoreApplication::translate("demo", "录音设备设置"), bar, openRecordingSettings);
        menu->popup(bar->mapToGlobal(position));
    };
    QObject::connect(&topBar, &QWidget::customContextMenuRequested, &topBar, showMenu);
}
