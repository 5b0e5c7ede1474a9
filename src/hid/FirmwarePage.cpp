#include "hid/FirmwarePage.h"

#include "device/DeviceApi.h"
#include "helpers/MessageBoxes.h"
#include "helpers/WinHandles.h"
#include "hid/UpgradeStage.h"

#include <QDir>
#include <QFileDialog>
#include <QMetaObject>

#include <mutex>

namespace {

constexpr DWORD kDeviceMonitorPauseMs = 100; // before and after the device monitor is ended

using SharedLink = std::shared_ptr<FirmwarePage::Link>;

// Upgrade workers, one for each target, given a SharedLink of their own. Sending the image to the device is
// not part of this program yet; a worker that does so reports through reportUpgradeStage.
DWORD WINAPI runEarphoneUpgrade(void *link) {
    const std::unique_ptr<SharedLink> page(static_cast<SharedLink *>(link));
    return 1;
}

DWORD WINAPI runDongleUpgrade(void *link) {
    const std::unique_ptr<SharedLink> page(static_cast<SharedLink *>(link));
    return 1;
}

} // namespace

class FirmwarePage::Link {
public:
    explicit Link(const FirmwareWidgets &widgets) : status_(widgets.status), progress_(widgets.progress) {}

    void cut() {
        const std::lock_guard<std::mutex> lock(mutex_);
        status_ = nullptr;
        progress_ = nullptr;
    }

    void show(const UpgradeDisplay &display) {
        const std::lock_guard<std::mutex> lock(mutex_);
        if (display.status && status_)
            QMetaObject::invokeMethod(status_, "setText", Qt::QueuedConnection,
                                      Q_ARG(QString, QString::fromLatin1(display.status)));
        if (display.progress && progress_)
            QMetaObject::invokeMethod(progress_, "setValue", Qt::QueuedConnection,
                                      Q_ARG(int, *display.progress));
    }

private:
    std::mutex mutex_;
    QLabel *status_;
    QProgressBar *progress_;
};

FirmwarePage::FirmwarePage(QWidget &window, const FirmwareWidgets &widgets)
    : window_(window), widgets_(widgets), link_(std::make_shared<Link>(widgets)) {
    connect(widgets_.browse, &QAbstractButton::clicked, this, &FirmwarePage::browseFirmwareFile);
    connect(widgets_.upgradeEarphone, &QAbstractButton::clicked, this, &FirmwarePage::upgradeEarphone);
    connect(widgets_.upgradeDongle, &QAbstractButton::clicked, this, &FirmwarePage::upgradeDongle);
}

FirmwarePage::~FirmwarePage() {
    link_->cut();
}

// The caption speaks of settings, the dialog opens an image: its text is fixed.
void FirmwarePage::browseFirmwareFile() {
    widgets_.path->setText(QFileDialog::getOpenFileName(
        &window_, QStringLiteral("select file to save setting"), QDir::currentPath(),
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
    auto forWorker = std::make_unique<SharedLink>(link_);
    const UniqueHandle thread(CreateThread(nullptr, 0, worker, forWorker.get(), 0, nullptr));
    if (thread)
        static_cast<void>(forWorker.release()); // the worker's now
}

uint32_t reportUpgradeStage(FirmwarePage::Link &page, int32_t value, uint32_t stage) {
    page.show(upgradeDisplay(stage, value));
    return 0;
}
