// Downloads the new installer, proves it against the update information, and starts it after the user's
// consent.
#pragma once

#include "update/ServerConfig.h"
#include "update/UpdateScreen.h"

#include <functional>
#include <memory>
#include <string>

// What a download works with; the first two are the last check's results.
struct InstallerDownload {
    ServerConfig config;
    std::wstring updateInformation;
    std::shared_ptr<UpdateScreen> screen;
    std::function<void()> ended; // called in the GUI thread when the download is over
};

// Runs downloadInstaller in a thread of its own; false when there is no thread to be had.
bool startInstallerDownload(std::unique_ptr<InstallerDownload> download);

// The thread's work. Blocks until the installer has been started, refused or declined.
void downloadInstaller(const InstallerDownload &download);

// The FTP client's progress callback; context is the UpdateScreen.
void onDownloadProgress(uint32_t stage, int32_t value, uintptr_t context);
