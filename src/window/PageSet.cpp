#include "window/PageSet.h"

#include "hid/DeviceEventListener.h"
#include "hid/FirmwarePage.h"
#include "pages/effects/ExclusiveEffects.h"
#include "pages/equalizer/EqualizerPage.h"
#include "pages/lighting/LedPage.h"
#include "pages/microphone/MicrophonePage.h"
#include "pages/microphone/NoiseReductionPage.h"
#include "pages/microphone/VoiceEffectsPage.h"
#include "pages/room/RoomEffectsPage.h"
#include "pages/sound_field/SoundFieldPage.h"
#include "pages/status/BatteryStatus.h"
#include "pages/status/SampleRatePage.h"
#include "pages/status/StatusStrip.h"
#include "pages/volume/SystemVolumeWatcher.h"
#include "pages/volume/VolumePage.h"
#include "ui_demoClass.h"
#include "update/SoftwareUpdate.h"
#include "window/language/Translation.h"
#include "window/WindowTimers.h"

namespace {

constexpr int kDevicesSettleMs = 100; // a plugged receiver brings several devices, one message each

FirmwareWidgets firmwareWidgets(const Ui::demoClass &form) {
    return {form.lineEdit_4,    form.pushButton_10, form.pushButton_11,
            form.pushButton_17, form.label_241,     form.progressBar};
}

UpdateWidgets updateWidgets(const Ui::demoClass &form) {
    return {form.label_241, form.progressBar, form.pushButton_18};
}

} // namespace

PageSet::PageSet(PageContext context, WindowTimers &timers, const QString &curveFilePath) : timers_(timers) {
    setUpVolume(context);
    sampleRate_ = std::make_unique<SampleRatePage>(context);
    exclusiveEffects_ = std::make_unique<ExclusiveEffects>(context);
    equalizer_ = std::make_unique<EqualizerPage>(context, *exclusiveEffects_, curveFilePath.toStdWString());
    roomEffects_ = std::make_unique<RoomEffectsPage>(context, *exclusiveEffects_);
    soundField_ = std::make_unique<SoundFieldPage>(context, *exclusiveEffects_, timers.rotation);
    microphone_ = std::make_unique<MicrophonePage>(context);
    voiceEffects_ = std::make_unique<VoiceEffectsPage>(context);
    noiseReduction_ = std::make_unique<NoiseReductionPage>(context);
    led_ = std::make_unique<LedPage>(context);
    battery_ = std::make_unique<BatteryStatus>(context, timers.battery);
    statusStrip_ = std::make_unique<StatusStrip>(context);
    firmware_ = std::make_unique<FirmwarePage>(context.window, firmwareWidgets(context.form));
    update_ = std::make_unique<SoftwareUpdate>(updateWidgets(context.form), context.language);
    QObject::connect(&timers.batteryNow, &QTimer::timeout, battery_.get(),
                     &BatteryStatus::refreshBatteryStatus);
}

void PageSet::setUpVolume(PageContext context) {
    volume_ = std::make_unique<VolumePage>(context);
    timers_.startForPages();
    volumeWatcher_ = std::make_unique<SystemVolumeWatcher>(&context.window);
    volume_->follow(*volumeWatcher_);
    listener_ =
        std::make_unique<DeviceEventListener>(context.device.virtualSurroundOn, *context.form.pushButton_32);
    volume_->start();
}

PageSet::~PageSet() = default;

void PageSet::endListener() {
    listener_.reset();
}

void PageSet::endVolumeWatcher() {
    volumeWatcher_.reset();
}

void PageSet::devicesChanged() {
    if (listener_)
        listener_->devicesChanged();
    if (!timers_.batteryNow.isActive())
        timers_.batteryNow.start(kDevicesSettleMs);
}

void PageSet::follow(const Translation &translation) {
    const auto follow = [&](const auto &page, auto retranslated) {
        QObject::connect(&translation, &Translation::retranslated, page.get(), retranslated);
    };
    follow(volume_, &VolumePage::retranslated);
    follow(equalizer_, &EqualizerPage::retranslated);
    follow(soundField_, &SoundFieldPage::retranslated);
    follow(microphone_, &MicrophonePage::retranslated);
    follow(update_, &SoftwareUpdate::retranslated);
}

void PageSet::checkForUpdateAtStart(QPushButton &updateButton) {
    update_->checkAtStart(&updateButton);
}

void PageSet::selectRoomMode(int index) {
    roomEffects_->selectMode(index);
}

bool PageSet::upgradeInProgress() const {
    return firmware_->upgradeInProgress();
}
