#include "hid/FirmwarePage.h"

#include "device/DeviceApi.h"
#include "helpers/MessageBoxes.h"
#include "helpers/WinHandles.h"
#include "hid/UpgradeStage.h"

#include <QDir>
#include <QFileDialog>
#include <QMetaObject>

namespace {

constexpr DWORD kDeviceMonitorPauseMs = 100; // before and after the device monitor is ended

// Upgrade workers, one for each target, given the page. Sending the image to the device is not part of this
// program yet; a worker that does so reports through reportUpgradeStage.
DWORD WINAPI runEarphoneUpgrade(void *) {
    return 1;
}

DWORD WINAPI runDongleUpgrade(void *) {
    return 1;
}

} // namespace

FirmwarePage::FirmwarePage(QWidget *window, const FirmwareWidgets &widgets, QObject *parent)
    : QObject(parent), window_(window), widgets_(widgets) {
    connect(widgets_.browse, &QAbstractButton::clicked, this, &FirmwarePage::browseFirmwareFile);
    connect(widgets_.upgradeEarphone, &QAbstractButton::clicked, this, &FirmwarePage::upgradeEarphone);
    connect(widgets_.upgradeDongle, &QAbstractButton::clicked, this, &FirmwarePage::upgradeDongle);
}

void FirmwarePage::browseFirmwareFile() {
    // The caption is the one the maker wants here.
    widgets_.path->setText(QFileDialog::getOpenFileName(
        window_, QStringLiteral("select file to save setting"), QDir::currentPath(),
        QStringLiteral("binary file(*.bin);;all file(*.*)")));
}

void FirmwarePage::upgradeEarphone() {
    startUpgrade(QStringLiteral("Please select a EARPHONE binary file to update"), runEarphoneUpgrade);
}

void FirmwarePage::upgradeDongle() {
    startUpgrade(QStringLiteral("Please select a DONGLE binary file to update"), runDongleUpgrade);
}

void FirmwarePage::startUpgrade(const QString &missingPathText, Worker worker) {
    if (widgets_.path->text().isEmpty()) {
        ShowMessage(missingPathText, nullptr, MB_OK);
        return;
    }
    widgets_.upgradeDongle->setEnabled(false);
    widgets_.upgradeEarphone->setEnabled(false);
    upgradeInProgress_ = true;
    Sleep(kDeviceMonitorPauseMs);
    DeviceApi::killTask(L"devmonitor.exe");
    Sleep(kDeviceMonitorPauseMs);
    const UniqueHandle thread(CreateThread(nullptr, 0, worker, this, 0, nullptr));
}

uint32_t reportUpgradeStage(FirmwarePage &page, int32_t value, uint32_t stage) {
    const UpgradeDisplay display = upgradeDisplay(stage, value);
    if (display.status) {
        QMetaObject::invokeMethod(page.widgets_.status, "setText", Qt::QueuedConnection,
                                  Q_ARG(QString, QString::fromLatin1(display.status)));
    }
    if (display.progress) {
        QMetaObject::invokeMethod(page.widgets_.progress, "setValue", Qt::QueuedConnection,
                                  Q_ARG(int, *display.progress));
    }
    return 0;
}
