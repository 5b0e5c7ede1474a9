// The main window: frameless, custom-drawn, and the composition root of the panel. It owns the form, the
// device's settings, the timers and the pages; what a page does is in the page's own class. GUI thread only.
#pragma once

#include "device/DeviceState.h"
#include "helpers/InterfaceLanguage.h"
#include "pages/VolumeFlags.h"
#include "window/dialogs/DialogState.h"
#include "window/WindowTimers.h"

#include <memory>
#include <QMainWindow>

class Navigation;
class PageSet;
class SettingsDialog;
class SystemEvents;
class Translation;
class TrayIcon;
class ToolTips;
namespace Ui {
class demoClass;
}

class demo : public QMainWindow {
    Q_OBJECT

public:
    // Reads the device and builds everything; ends the process with exit code 0 when the device cannot be
    // read.
    explicit demo(QWidget *parent = nullptr);
    // Shuts the device down.
    ~demo() override;

    void ShowVersionDialog();
    void OpenSettingsDialog();
    void LoadTranslation();
    void ChooseLanguage();
    void OpenMakerWebSite();
    void OpenRecordingSettings();
    // Creates the tray icon, once per process.
    void ShowTray();

public slots:
    // The first time, only the current page gets its style before it is shown.
    void setVisible(bool visible) override;
    // Index of the hidden position combo box: 0..3 choose that position, others are ignored.
    void event_page4_onCurrentIndexChanged(int index);

protected slots:
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;

protected:
    // Closing by the system (Alt+F4, the taskbar) does what the close button does.
    void closeEvent(QCloseEvent *event) override;
    void showEvent(QShowEvent *event) override;

private:
    void setUpForm();
    void initialiseDevice();
    void readDevice();
    void setUpPages();
    void connectTopBar();
    void connectSystem();
    void startHandoverPoll();
    void keepFocusOffSliders();
    void layOutAgain();

    void minimise();
    void closeOrHide();
    // Once the device was read: stops the helper process and writes the system block a last time before the
    // device is released.
    void shutDownDevice();
    void pollHandover();
    void countTick();

    std::unique_ptr<Ui::demoClass> form_;
    DeviceState device_;
    VolumeFlags volumeFlags_;
    InterfaceLanguage language_;
    DialogState dialogState_;
    WindowTimers timers_;
    QString curveFilePath_;
    std::wstring configFilePath_; // where config.txt belongs; the panel does not open it
    bool deviceRead_ = false;
    int tickCount_ = 0;
    bool wasShown_ = false;
    bool dragging_ = false;
    QPoint pressPosition_;

    std::unique_ptr<ToolTips> toolTips_;
    std::unique_ptr<Translation> translation_;
    std::unique_ptr<SettingsDialog> settings_;
    std::unique_ptr<Navigation> navigation_;
    std::unique_ptr<TrayIcon> trayIcon_;
    std::unique_ptr<PageSet> pages_;
    std::unique_ptr<SystemEvents> systemEvents_;
};
