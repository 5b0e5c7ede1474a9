#include "pages/microphone/MicrophonePage.h"

#include "device/DeviceApi.h"
#include "pages/microphone/MonitoringTask.h"
#include "pages/ShownState.h"
#include "pages/StyleSheetText.h"
#include "ui_demoClass.h"

namespace {

// The label tells what is stored, even where the slider's range does not reach it.
void showLevel(QSlider &slider, QLabel &label, int level) {
    slider.setValue(level);
    label.setText(QString::number(level));
}

} // namespace

MicrophonePage::MicrophonePage(PageContext context) : context_(context) {
    setUpControls();
    connectControls();
}

void MicrophonePage::setUpControls() {
    Ui::demoClass &form = context_.form;
    const SystemHead &head = context_.device.system.head;

    form.verticalSlider->setRange(0, 100);
    form.verticalSlider_2->setRange(0, 100);
    retranslated();
    sendEndpointLevel();
    showMute();
    showMonitoring();
    if (head.monitoringOn)
        MonitoringTask::ensureRunning();
    showDriver();
    form.btn_install_mic->hide(); // the headset's driver comes with its installer
}

void MicrophonePage::connectControls() {
    Ui::demoClass &form = context_.form;
    connect(form.verticalSlider, &QSlider::valueChanged, this, &MicrophonePage::changeLevel);
    connect(form.pushButton_15, &QPushButton::clicked, this, &MicrophonePage::toggleMute);
    connect(form.verticalSlider_2, &QSlider::valueChanged, this, &MicrophonePage::changeMonitoringLevel);
    // Two buttons for monitoring: the picture under its level, and the one that bears its name.
    for (const QPushButton *button : {form.pushButton_16, form.btn_uninstall_mic})
        connect(button, &QPushButton::clicked, this, &MicrophonePage::toggleMonitoring);
    connect(form.pushButton_5, &QPushButton::clicked, this, &MicrophonePage::toggleDriver);
}

void MicrophonePage::retranslated() {
    Ui::demoClass &form = context_.form;
    const SystemHead &head = context_.device.system.head;
    const FlagScope filling(context_.volume.volumeUpdating);
    showLevel(*form.verticalSlider, *form.label_15, head.micLevel);
    showLevel(*form.verticalSlider_2, *form.label_16, head.monitorLevel);
}

void MicrophonePage::changeLevel(int level) {
    if (context_.volume.volumeUpdating)
        return;
    SystemHead &head = context_.device.system.head;
    context_.form.label_15->setText(QString::number(level));
    head.micLevel = level;
    DeviceApi::setVolume(level, DeviceApi::Endpoint::Microphone);
    head.micMuted = level == 0;
    showMute();
    context_.device.saveType1Block();
}

void MicrophonePage::toggleMute() {
    context_.device.system.head.micMuted ^= 1;
    showMute();
    sendEndpointLevel();
    context_.device.saveType1Block();
}

void MicrophonePage::changeMonitoringLevel(int level) {
    if (context_.volume.volumeUpdating)
        return;
    SystemHead &head = context_.device.system.head;
    context_.form.label_16->setText(QString::number(level));
    head.monitorLevel = level;
    head.monitoringOn = level != 0;
    applyMonitoring();
}

void MicrophonePage::toggleMonitoring() {
    context_.device.system.head.monitoringOn ^= 1;
    applyMonitoring();
}

void MicrophonePage::applyMonitoring() {
    showMonitoring();
    MonitoringTask::follow(context_.device.system.head.monitoringOn != 0);
    context_.device.saveType1Block();
}

void MicrophonePage::toggleDriver() {
    context_.device.system.head.micPageSwitch ^= 1;
    showDriver();
    context_.device.saveType1Block();
}

// A muted microphone has the endpoint level 0; its own level stays stored.
void MicrophonePage::sendEndpointLevel() {
    const SystemHead &head = context_.device.system.head;
    DeviceApi::setVolume(head.micMuted ? 0 : head.micLevel, DeviceApi::Endpoint::Microphone);
}

void MicrophonePage::showDriver() {
    StyleSheetText::showSwitch(*context_.form.pushButton_5, context_.device.system.head.micPageSwitch != 0);
}

void MicrophonePage::showMute() {
    StyleSheetText::showMuted(*context_.form.pushButton_15, context_.device.system.head.micMuted != 0);
}

void MicrophonePage::showMonitoring() {
    const bool on = context_.device.system.head.monitoringOn != 0;
    StyleSheetText::showMuted(*context_.form.pushButton_16, !on);
    ShownState::show(*context_.form.btn_uninstall_mic, on);
}
