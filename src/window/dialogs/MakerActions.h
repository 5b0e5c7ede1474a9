// The maker's web site and the system's recording settings, and the top bar's right-click menu with the two.
#pragma once

#include <functional>
#include <QUrl>
#include <QWidget>

QUrl makerWebSite();

// Opens the maker's web site in the default browser. A failure is logged.
void OpenMakerWebSite();

// Opens the Windows Sound control panel on its Recording tab. A failure is logged.
void OpenRecordingSettings();

// Gives the top bar a right-click menu with the two actions; its texts are those of the moment it opens.
void addTopBarMenu(QWidget &topBar, std::function<void()> openWebSite,
                   std::function<void()> openRecordingSettings);
