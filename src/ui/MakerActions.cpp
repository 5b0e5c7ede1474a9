#include "ui/MakerActions.h"

#include "helpers/LogHelper.h"

#include <QCoreApplication>
#include <QDesktopServices>
#include <QMenu>
#include <QProcess>
#include <QUrl>

namespace {

const char kMenuStyle[] = "QMenu { background-color: #2b2b2b; border: 1px solid #474747; padding: 6px 0px;"
                          " color: #FFFFFF; font: 14px 'Microsoft YaHei'; }"
                          "QMenu::item { background-color: transparent; padding: 8px 24px; }"
                          "QMenu::item:selected { background-color: #286360; }";

} // namespace

void OpenMakerWebSite() {
    if (!QDesktopServices::openUrl(QUrl(QStringLiteral("https://www.qorsound.example/"))))
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
        menu->setStyleSheet(QString::fromLatin1(kMenuStyle));
        menu->addAction(QCoreApplication::translate("demo", "访问官方网站"), bar, openWebSite);
        menu->addAction(QCoreApplication::translate("demo", "录音设备设置"), bar, openRecordingSettings);
        menu->popup(bar->mapToGlobal(position));
    };
    QObject::connect(&topBar, &QWidget::customContextMenuRequested, &topBar, showMenu);
}
