#include "update/SoftwareUpdate.h"

#include "helpers/LogHelper.h"
#include "helpers/ProductSettings.h"
#include "update/Crc32.h"
#include "update/ftp/FtpDownload.h"
#include "update/InstallerDownload.h"
#include "update/UpdateInfo.h"

#include <exception>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <windows.h>

namespace {

// The window waits for the check, so the user does.
constexpr TimeLimits kCheckLimits{std::chrono::seconds(3), std::chrono::seconds(8)};

// Forgets the clicks and keys that came while this thread was busy: each click would be a check of its own.
void dropWaitingInput() {
    MSG message;
    while (PeekMessageW(&message, nullptr, WM_MOUSEFIRST, WM_MOUSELAST, PM_REMOVE) ||
           PeekMessageW(&message, nullptr, WM_KEYFIRST, WM_KEYLAST, PM_REMOVE)) {
    }
}

} // namespace

SoftwareUpdate::SoftwareUpdate(const UpdateWidgets &widgets, const InterfaceLanguage &language,
                               QObject *parent)
    : QObject(parent), widgets_(widgets), language_(language),
      screen_(std::make_shared<UpdateScreen>(widgets.status, widgets.progress, language, this)) {
    connect(widgets_.check, &QPushButton::clicked, this, &SoftwareUpdate::onCheckUpdateClicked);
}

SoftwareUpdate::~SoftwareUpdate() {
    screen_->detach();
}

void SoftwareUpdate::showStatus(const BilingualText &text) {
    widgets_.status->setText(QString::fromWCharArray(text.in(language_.isEnglish())));
}

void SoftwareUpdate::retranslated() {
    if (language_.code < 0)
        return;
    // The label also shows what others report, which stays.
    const std::wstring shown = widgets_.status->text().toStdWString();
    for (const BilingualText &text : UpdateTexts::kStatuses) {
        if (shown == text.english || shown == text.chinese)
            showStatus(text);
    }
}

void SoftwareUpdate::checkAtStart(QAbstractButton *updateButton) {
    if (checkForUpdate() != CheckResult::NewVersion) {
        showStatus(UpdateTexts::kNoNewVersion);
        return;
    }
    emit updateButton->clicked();
    showStatus(UpdateTexts::kNewVersion);
}

CheckResult SoftwareUpdate::checkForUpdate() {
    CheckResult result = CheckResult::NoInformation;
    try {
        result = askServer();
    } catch (const std::exception &error) { // out of memory
        QOR_LOG(L"update check given up: %S", error.what());
    }
    QOR_LOG(L"update check: %d", static_cast<int>(result));
    return result;
}

CheckResult SoftwareUpdate::askServer() {
    widgets_.progress->setValue(0);
    const std::wstring folder = ProductSettings::readString(L"InstallPath").value_or(L"");
    ServerConfigRecord record;
    if (folder.empty() || loadServerConfig(folder + L"\\qor_netcfg.fsc", record) < 1)
        return CheckResult::NoConfiguration;
    config_ = getServerConfig(record);

    uint32_t installedCrc = 0;
    if (fileCrc(folder + L"\\backup\\setup_backup.exe", installedCrc) < 1)
        return CheckResult::NoPackageCopy;

    std::vector<uint8_t> bytes;
    const FtpResult downloaded = downloadToMemory(config_.server, config_.folder + "\\qor_updateinfo.dat",
                                                  bytes, nullptr, {}, kCheckLimits);
    if (downloaded != FtpResult::Done) {
        QOR_LOG(L"update information: download ended with %d", static_cast<int>(downloaded));
        return CheckResult::NoInformation;
    }
    updateInformation_ = updateInformationText(bytes.data(), bytes.size());
    if (bytes.empty())
        return CheckResult::EmptyInformation;
    return listsInstaller(updateInformation_, installedCrc) ? CheckResult::IsCurrent
                                                            : CheckResult::NewVersion;
}

void SoftwareUpdate::onCheckUpdateClicked() {
    widgets_.check->setEnabled(false);
    showStatus(UpdateTexts::kChecking);
    widgets_.status->repaint(); // now, since the check keeps the event loop waiting
    const auto enable = [this] { widgets_.check->setEnabled(true); };
    if (checkForUpdate() != CheckResult::NewVersion) {
        showStatus(UpdateTexts::kNoNewVersion);
        dropWaitingInput();
        enable();
        return;
    }
    showStatus(UpdateTexts::kStartDownload);
    InstallerDownload download{config_, updateInformation_, screen_, enable};
    if (!startInstallerDownload(std::make_unique<InstallerDownload>(std::move(download)))) {
        showStatus(UpdateTexts::kDownloadFailed);
        enable();
    }
}
