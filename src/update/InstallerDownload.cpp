#include "update/InstallerDownload.h"

#include "device/DeviceApi.h"
#include "helpers/LogHelper.h"
#include "helpers/MessageBoxes.h"
#include "helpers/WinHandles.h"
#include "update/Crc32.h"
#include "update/DownloadProgress.h"
#include "update/ftp/FtpDownload.h"
#include "update/UpdateInfo.h"

#include <exception>

namespace {

constexpr wchar_t kInstallerName[] = L"qor_setup.exe";
constexpr TimeLimits kDownloadLimits{std::chrono::seconds(30), {}};

// As Windows gives it; empty when Windows gives none.
std::wstring temporaryFolder() {
    wchar_t folder[1024] = {};
    const DWORD length = GetTempPathW(static_cast<DWORD>(std::size(folder)), folder);
    return length < std::size(folder) ? std::wstring(folder, length) : std::wstring(); // longer: not stored
}

bool userConsents(const UpdateScreen &screen) {
    const BilingualText &text = UpdateTexts::kConsent;
    return ShowMessageByFlag(text.english, text.chinese, UpdateTexts::kConsentTitle, screen.isEnglish(),
                             MB_OKCANCEL) == IDOK;
}

void saveAndStart(const std::vector<uint8_t> &installer, UpdateScreen &screen) {
    const std::wstring folder = temporaryFolder();
    if (folder.empty()) {
        QOR_LOG(L"no temporary folder for the installer");
        return;
    }
    std::wstring path = folder;
    if (path.back() != L'\\')
        path += L'\\';
    path += kInstallerName;
    // An older file of that name must not be started in place of one that could not be written.
    if (const int error = WriteFileBytes(path.c_str(), installer.data(), installer.size())) {
        QOR_LOG(L"cannot save the installer to %s: error %d", path.c_str(), error);
        return;
    }
    screen.queueInGui([folder] {
        DeviceApi::startTask(kInstallerName, nullptr, DeviceApi::ShowCommand::Shown, folder.c_str());
    });
}

DWORD WINAPI threadProcedure(void *argument) {
    const std::unique_ptr<InstallerDownload> download(static_cast<InstallerDownload *>(argument));
    try {
        downloadInstaller(*download);
    } catch (const std::exception &error) { // out of memory
        QOR_LOG(L"download of the installer given up: %S", error.what());
    }
    download->screen->queueInGui(download->ended);
    return 0;
}

} // namespace

void onDownloadProgress(uint32_t stage, int32_t value, uintptr_t context) {
    auto &screen =
        *reinterpret_cast<UpdateScreen *>(context); // NOLINT(performance-no-int-to-ptr): the context's type
    const ProgressDisplay display = progressDisplay(stage, value);
    screen.queueStatus(display.text);
    if (display.bar)
        screen.queueProgress(*display.bar);
}

void downloadInstaller(const InstallerDownload &download) {
    UpdateScreen &screen = *download.screen;
    std::vector<uint8_t> installer;
    const FtpProgress progress{&onDownloadProgress, reinterpret_cast<uintptr_t>(&screen)};
    const std::string remotePath = download.config.folder + "\\setup.exe";
    if (downloadToMemory(download.config.server, remotePath, installer, nullptr, progress, kDownloadLimits) !=
        FtpResult::Done) {
        screen.queueStatus(UpdateTexts::kDownloadFailed);
        return;
    }
    if (!listsInstaller(download.updateInformation, crcRegister(installer.data(), installer.size()))) {
        screen.queueStatus(UpdateTexts::kIllegalInstaller);
        return;
    }
    if (screen.isAttached() && userConsents(screen))
        saveAndStart(installer, screen);
}

bool startInstallerDownload(std::unique_ptr<InstallerDownload> download) {
    const UniqueHandle thread(CreateThread(nullptr, 0, &threadProcedure, download.get(), 0, nullptr));
    if (thread)
        static_cast<void>(download.release()); // the thread owns it
    return static_cast<bool>(thread);
}
