#include "pages/volume/VolumePage.h"

#include "device/DeviceApi.h"
#include "helpers/ProductSettings.h"
#include "pages/ShownState.h"
#include "pages/StyleSheetText.h"
#include "pages/volume/SystemVolumeWatcher.h"
#include "ui_demoClass.h"

namespace {

constexpr wchar_t kLockValue[] = L"vol_locked";

void showLevel(QLabel &label, int level) {
    label.setText(QString::number(level));
}

void showLevel(QLabel &label, QSlider &slider, int level) {
    showLevel(label, level);
    slider.setValue(level);
}

} // namespace

VolumePage::VolumePage(PageContext context) : context_(context) {
    prepareControls();
    DeviceApi::pollVolume();
    showLevels();
}

void VolumePage::start() {
    muteSilentMaster();
    showPageSwitch();
    loadLock();
    connectControls();
}

void VolumePage::retranslated() {
    showLevels();
}

void VolumePage::showStored() {
    showLevels();
    showMute();
    showPageSwitch();
}

void VolumePage::prepareControls() {
    const Ui::demoClass &form = context_.form;
    for (QSlider *slider :
         {form.verticalSlider_4, form.horizontalSlider_16, form.verticalSlider_5, form.verticalSlider_7})
        slider->setRange(0, 100);
    // The switch works without being shown; the driver buttons do nothing.
    for (QWidget *hidden : std::initializer_list<QWidget *>{
             form.pushButton_7, form.label_13, form.btn_install_spk, form.btn_uninstall_spk, form.label_147})
        hidden->hide();
}

void VolumePage::follow(const SystemVolumeWatcher &watcher) {
    // Automatic connections: what the audio system's thread emits is queued to this thread.
    connect(&watcher, &SystemVolumeWatcher::volumeChanged, this, &VolumePage::systemVolumeChanged);
    connect(&watcher, &SystemVolumeWatcher::muteChanged, this, &VolumePage::systemMuteChanged);
}

void VolumePage::muteSilentMaster() {
    setMuted(context_.device.sound.masterVolume == 0);
}

void VolumePage::loadLock() {
    volumeLocked = ProductSettings::readDword(kLockValue).value_or(0) != 0;
    showLock();
}

void VolumePage::connectControls() {
    const Ui::demoClass &form = context_.form;
    connect(&context_.device, &DeviceState::soundReplaced, this, &VolumePage::showStored);
    connect(form.pushButton_7, &QPushButton::clicked, this, &VolumePage::togglePageSwitch);
    connect(form.pushButton_12, &QPushButton::clicked, this, &VolumePage::toggleMute);
    connect(form.pushButton_13, &QPushButton::clicked, this, &VolumePage::toggleMute);
    connect(form.pushButton_4, &QPushButton::clicked, this, &VolumePage::toggleLock);

    const auto connectSlider = [this](QSlider *slider, VolumeSource source) {
        connect(slider, &QSlider::valueChanged, this,
                [this, source](int value) { sliderMoved(source, value); });
    };
    connectSlider(form.verticalSlider_4, VolumeSource::PageMaster);
    connectSlider(form.horizontalSlider_16, VolumeSource::SecondMaster);
    connectSlider(form.verticalSlider_5, VolumeSource::Left);
    connectSlider(form.verticalSlider_7, VolumeSource::Right);
}

void VolumePage::sliderMoved(VolumeSource source, int value) {
    if (context_.volume.volumeUpdating)
        return;
    const FlagScope updating(context_.volume.volumeUpdating);
    SoundBlock &sound = context_.device.sound;
    const auto level = static_cast<int8_t>(value);
    if (source == VolumeSource::Left)
        sound.leftVolume = level;
    else if (source == VolumeSource::Right)
        sound.rightVolume = level;
    else
        sound.masterVolume = level;
    applyVolumeChange(source);
}

void VolumePage::systemVolumeChanged(int newVolume) {
    if (echoes_.isEcho(newVolume, std::chrono::steady_clock::now()))
        return;
    VolumeFlags &flags = context_.volume;
    SoundBlock &sound = context_.device.sound;
    if (flags.volumeSelfSet || flags.volumeUpdating || !VolumeBalance::isNews(newVolume, sound.masterVolume))
        return;
    sound.masterVolume = static_cast<int8_t>(newVolume);
    const FlagScope updating(flags.volumeUpdating);
    applyVolumeChange(VolumeSource::SystemWatcher);
}

void VolumePage::systemMuteChanged(bool isMuted) {
    if (context_.volume.volumeUpdating)
        return;
    context_.device.sound.muted = isMuted;
    const FlagScope updating(context_.volume.volumeUpdating);
    showMute();
    context_.device.saveType2Block();
}

void VolumePage::toggleMute() {
    setMuted(!context_.device.sound.muted);
    context_.device.saveType2Block();
}

void VolumePage::togglePageSwitch() {
    context_.device.sound.pageSwitch ^= 1;
    showPageSwitch();
    context_.device.saveType2Block();
}

void VolumePage::toggleLock() {
    volumeLocked ^= 1;
    showLock();
    ProductSettings::writeDword(kLockValue, volumeLocked);
}

void VolumePage::applyVolumeChange(VolumeSource source) {
    if (source == VolumeSource::Left)
        applyChannel(&VolumeBalance::Levels::left);
    else if (source == VolumeSource::Right)
        applyChannel(&VolumeBalance::Levels::right);
    else
        applyMaster(source);
    muteByMaster();
}

void VolumePage::applyMaster(VolumeSource source) {
    DeviceState &device = context_.device;
    const int8_t lastSent = device.system.sound.masterVolume;
    setLevels(VolumeBalance::followMaster(levels(), lastSent));
    showLeft();
    showRight();
    showMaster();
    if (source != VolumeSource::SystemWatcher) // Windows has it already
        setEndpointVolume(Echo::Ignored);
    device.saveType2Block();
}

void VolumePage::applyChannel(VolumeBalance::Channel channel) {
    const bool locked = volumeLocked != 0;
    setLevels(VolumeBalance::followChannel(levels(), channel, locked));
    showLeft();
    showRight();
    showMaster();
    // The unlocked left channel alone lets the echo from Windows through; the right channel does not.
    const bool followed = channel == &VolumeBalance::Levels::left && !locked;
    setEndpointVolume(followed ? Echo::Followed : Echo::Ignored);
    context_.device.saveType2Block();
}

void VolumePage::muteByMaster() {
    const SoundBlock &sound = context_.device.sound;
    if (sound.masterVolume == 0 && !sound.muted) {
        setMuted(true);
    } else if (sound.masterVolume != 0 && sound.muted) {
        setMuted(false);
        setEndpointVolume(Echo::Ignored);
    }
}

VolumeBalance::Levels VolumePage::levels() const {
    const SoundBlock &sound = context_.device.sound;
    return {sound.masterVolume, sound.leftVolume, sound.rightVolume};
}

void VolumePage::setLevels(const VolumeBalance::Levels &levels) {
    SoundBlock &sound = context_.device.sound;
    sound.masterVolume = levels.master;
    sound.leftVolume = levels.left;
    sound.rightVolume = levels.right;
}

void VolumePage::setEndpointVolume(Echo echo) {
    const int8_t master = context_.device.sound.masterVolume;
    const auto set = [master] { DeviceApi::setVolume(master, DeviceApi::Endpoint::Playback); };
    echoes_.sent(master, echo, std::chrono::steady_clock::now());
    if (echo == Echo::Followed) {
        set();
        return;
    }
    const FlagScope selfSet(context_.volume.volumeSelfSet);
    set();
}

void VolumePage::setMuted(bool muted) {
    context_.device.sound.muted = muted;
    showMute();
    DeviceApi::setMasterMute(muted);
}

void VolumePage::showMaster() {
    const int master = levels().master;
    showLevel(*context_.form.label_56, *context_.form.verticalSlider_4, master);
    context_.form.horizontalSlider_16->setValue(master);
}

void VolumePage::showLeft() {
    showLevel(*context_.form.label_57, *context_.form.verticalSlider_5, levels().left);
}

void VolumePage::showRight() {
    showLevel(*context_.form.label_59, *context_.form.verticalSlider_7, levels().right);
}

void VolumePage::showLevels() {
    const FlagScope updating(context_.volume.volumeUpdating);
    showMaster();
    showLeft();
    showRight();
}

void VolumePage::showPageSwitch() {
    StyleSheetText::showSwitch(*context_.form.pushButton_7, context_.device.sound.pageSwitch != 0);
}

void VolumePage::showMute() {
    for (QPushButton *button : {context_.form.pushButton_12, context_.form.pushButton_13})
        StyleSheetText::showMuted(*button, context_.device.sound.muted != 0);
}

void VolumePage::showLock() {
    StyleSheetText::setBackgroundImage(*context_.form.pushButton_4,
                                       volumeLocked ? QStringLiteral("/right/png/icon_lock.png")
                                                    : QStringLiteral("/right/png/icon_lock_open.png"));
    ShownState::show(*context_.form.pushButton_4, volumeLocked != 0);
}
