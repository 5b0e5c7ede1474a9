#include "window/demo.h"

#include "device/DeviceApi.h"
#include "device/DeviceInitialisation.h"
#include "helpers/MessageBoxes.h"
#include "helpers/ProductSettings.h"
#include "pages/microphone/MonitoringTask.h"
#include "pages/ShownState.h"
#include "pages/status/BatteryStatus.h"
#include "resources/MainForm.h"
#include "ui_demoClass.h"
#include "window/dialogs/MakerActions.h"
#include "window/dialogs/SettingsDialog.h"
#include "window/dialogs/VersionDialog.h"
#include "window/InstanceOrder.h"
#include "window/language/LanguageChoice.h"
#include "window/language/Translation.h"
#include "window/Navigation.h"
#include "window/PageSet.h"
#include "window/ProcessEnd.h"
#include "window/screens/SmallScreen.h"
#include "window/SystemEvents.h"
#include "window/ToolTips.h"
#include "window/TrayIcon.h"

#include <QComboBox>
#include <QFile>
#include <QMouseEvent>
#include <QScreen>
#include <QSlider>
#include <QStyledItemDelegate>

namespace {

// Given when the window is made: set on the finished form, they would give every widget its style once more.
constexpr Qt::WindowFlags kWindowFlags = Qt::FramelessWindowHint | Qt::WindowMinimizeButtonHint;
constexpr int kLastTick = 100;
constexpr int kUpgradePage = 11;

} // namespace

demo::demo(QWidget *parent)
    : QMainWindow(parent, kWindowFlags), form_(std::make_unique<Ui::demoClass>()), timers_(this),
      curveFilePath_(QCoreApplication::applicationDirPath() + QStringLiteral("/config/eqs.bin")) {
    setUpForm();
    setAttribute(Qt::WA_OpaquePaintEvent);
    setAttribute(Qt::WA_NoSystemBackground);
    setAutoFillBackground(true);
    connect(&timers_.reLayout, &QTimer::timeout, this, &demo::layOutAgain);
    timers_.reLayout.start();
    toolTips_ = std::make_unique<ToolTips>(*form_->centralWidget);
    initialiseDevice();
    setAttribute(Qt::WA_TranslucentBackground);
    keepFocusOffSliders();
}

demo::~demo() {
    timers_.stopAll();
    shutDownDevice();
}

void demo::shutDownDevice() {
    if (!deviceRead_)
        return; // ended while the start fails: there are no settings to write back
    deviceRead_ = false;
    if (pages_)
        pages_->endListener();
    MonitoringTask::follow(false);
    if (pages_)
        pages_->endVolumeWatcher();
    device_.system.head.monitoringOn = 0;
    device_.saveType1Block();
    DeviceApi::releaseDevice(device_.info);
}

void demo::setUpForm() {
    setUpMainForm(*form_, *this);
    setAutoFillBackground(true);
    // What no widget covers (the frame around the central widget) is painted in the window's own colour.
    QPalette colours = palette();
    colours.setColor(QPalette::Window, Qt::black);
    setPalette(colours);
    // The native delegate ignores the style sheet's rules for list rows.
    for (QComboBox *box : findChildren<QComboBox *>())
        box->setItemDelegate(new QStyledItemDelegate(box));
    for (QPushButton *button : findChildren<QPushButton *>())
        if (button->isCheckable())
            ShownState::keep(*button);
    fitToHeight(*this, *form_, QGuiApplication::primaryScreen()->availableGeometry().height());
}

void demo::initialiseDevice() {
    trayIcon_ = std::make_unique<TrayIcon>(*this);
    if (ProductSettings::readDword(ProductSettings::kTrayIconShown).value_or(0) != 0)
        ShowTray();
    configFilePath_ = DeviceInitialisation::configFilePath();
    DeviceInitialisation::ensureUserKey();
    readDevice();
    DeviceInitialisation::applyStoredVolumes(device_);
    DeviceInitialisation::writeBlocks(device_);
    setUpPages();
    startHandoverPoll();
    DeviceApi::readUsbIds(device_.usbIds);
    pages_->checkForUpdateAtStart(*navigation_->button(kUpgradePage));
}

void demo::readDevice() {
    using DeviceInitialisation::Reading;
    const Reading reading = DeviceInitialisation::readDevice(device_, curveFilePath_.toStdWString());
    if (reading == Reading::Done) {
        deviceRead_ = true;
        return;
    }
    ShowMessage(reading == Reading::DriverFailed ? QStringLiteral("install driver FAILED")
                                                 : QStringLiteral("get device info FAILED"),
                nullptr, MB_OK);
    trayIcon_->remove();
    InstanceOrder::withdraw(); // an older instance need not make room
    ProductSettings::takeExitRequest();
    endProcessAtOnce();
}

void demo::setUpPages() {
    const PageContext context{*this, *form_, device_, volumeFlags_, language_};
    translation_ = std::make_unique<Translation>(*this, context);
    settings_ = std::make_unique<SettingsDialog>(*this, language_, dialogState_, *translation_);
    connectTopBar();
    navigation_ = std::make_unique<Navigation>(*this, *form_->stackedWidget, this);
    connect(&timers_.reLayout, &QTimer::timeout, navigation_.get(), &Navigation::styleHiddenPages);
    ChooseLanguage();

    connect(&timers_.tick, &QTimer::timeout, this, &demo::countTick);
    pages_ = std::make_unique<PageSet>(context, timers_, curveFilePath_);
    pages_->follow(*translation_);
    connectSystem();
    connect(&pages_->battery(), &BatteryStatus::ranLow, this,
            [this](int percent) { trayIcon_->notify(tr("耳机电量仅剩 %1%，请及时充电。").arg(percent)); });
    // By name: the slot is part of the window's meta-object.
    connect(form_->comboBox_2, SIGNAL(currentIndexChanged(int)), this,
            SLOT(event_page4_onCurrentIndexChanged(int)));
}

void demo::connectTopBar() {
    connect(form_->pushButton_3, &QPushButton::clicked, this, &demo::ShowVersionDialog);
    connect(form_->pushButton_2, &QPushButton::clicked, this, &demo::OpenSettingsDialog);
    connect(form_->pushButton_1, &QPushButton::clicked, this, &demo::minimise);
    connect(form_->pushButton, &QPushButton::clicked, this, &demo::closeOrHide);
    addTopBarMenu(
        *form_->widget_top, [this] { OpenMakerWebSite(); }, [this] { OpenRecordingSettings(); });
}

void demo::connectSystem() {
    systemEvents_ = std::make_unique<SystemEvents>();
    connect(systemEvents_.get(), &SystemEvents::sessionEnds, this, [this] { endProcess(this); });
    connect(systemEvents_.get(), &SystemEvents::devicesChanged, this, [this] { pages_->devicesChanged(); });
}

void demo::startHandoverPoll() {
    if (ProductSettings::readString(L"EnableAllDev") == std::wstring(L"true"))
        return;
    connect(&timers_.tick, &QTimer::timeout, this, &demo::pollHandover);
}

void demo::keepFocusOffSliders() {
    setFocusPolicy(Qt::NoFocus);
    for (QSlider *slider : findChildren<QSlider *>()) {
        slider->setFocusPolicy(Qt::NoFocus);
        for (QWidget *child : slider->findChildren<QWidget *>())
            child->setFocusPolicy(Qt::NoFocus);
    }
}

void demo::setVisible(bool visible) {
    if (visible && !wasShown_)
        navigation_->deferHiddenStyle();
    wasShown_ = wasShown_ || visible;
    QMainWindow::setVisible(visible);
}

void demo::layOutAgain() {
    if (QLayout *layout = centralWidget()->layout()) {
        layout->invalidate();
        layout->activate();
    }
    for (QWidget *child : findChildren<QWidget *>()) {
        child->updateGeometry();
        child->update();
    }
    update();
    repaint(); // paints what all of them asked for in one go
}

void demo::ShowVersionDialog() {
    ::ShowVersionDialog(*this, language_, dialogState_);
}

void demo::OpenSettingsDialog() {
    settings_->OpenSettingsDialog();
}

void demo::LoadTranslation() {
    translation_->LoadTranslation();
}

void demo::ChooseLanguage() {
    language_.code = ::ChooseLanguage();
    LoadTranslation();
}

void demo::OpenMakerWebSite() {
    ::OpenMakerWebSite();
}

void demo::OpenRecordingSettings() {
    ::OpenRecordingSettings();
}

void demo::ShowTray() {
    trayIcon_->show();
}

void demo::event_page4_onCurrentIndexChanged(int index) {
    pages_->selectRoomMode(index);
}

void demo::mousePressEvent(QMouseEvent *event) {
    if (event->button() != Qt::LeftButton || event->y() >= form_->widget_top->height())
        return;
    dragging_ = true;
    pressPosition_ = event->pos();
}

void demo::mouseMoveEvent(QMouseEvent *event) {
    if (dragging_)
        move(mapToGlobal(event->pos() - pressPosition_));
}

void demo::mouseReleaseEvent(QMouseEvent *) {
    dragging_ = false;
}

void demo::closeEvent(QCloseEvent *event) {
    event->ignore();
    closeOrHide();
}

void demo::showEvent(QShowEvent *event) {
    QMainWindow::showEvent(event);
    if (event->spontaneous()) // restored by the system
        return;
    trayIcon_->windowIsUp();
    systemEvents_->watchHidDevices(*this);
}

// The snapshots are for other programs: the panel does not read them back.
void demo::minimise() {
    ProductSettings::writeBinary(L"{6F8E9E8B-C370-48D3-A20E-D1CA1D61BB3C}", &device_.sound,
                                 sizeof device_.sound);
    ProductSettings::writeBinary(L"{983E6A3C-E1AE-49BD-9E50-8FCB108C3F8D}", &device_.extension,
                                 sizeof device_.extension);
    ProductSettings::writeBinary(L"{F5530E75-A2A5-43E8-B9DF-1A1E225B5D1A}", &device_.system.head,
                                 sizeof device_.system.head);
    showMinimized();
}

void demo::closeOrHide() {
    if (!settings_->hidesToTray())
        endProcess(this);
    ShowTray();
    hide();
    trayIcon_->notifyOfHiding();
}

void demo::pollHandover() {
    if (ProductSettings::takeExitRequest() || InstanceOrder::newerAsked())
        endProcess(this);
}

// Stands still while a firmware upgrade runs.
void demo::countTick() {
    if (pages_ && pages_->upgradeInProgress())
        return;
    if (++tickCount_ > kLastTick)
        tickCount_ = 0;
}
