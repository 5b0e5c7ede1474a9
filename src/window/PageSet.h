// All page controllers and what reaches them from other threads, built in the order of their first calls of
// the device library. Owned by the main window.
#pragma once

#include "pages/PageContext.h"

#include <memory>
#include <QPushButton>

class BatteryStatus;
class DeviceEventListener;
class EqualizerPage;
class ExclusiveEffects;
class FirmwarePage;
class LedPage;
class MicrophonePage;
class NoiseReductionPage;
class RoomEffectsPage;
class SampleRatePage;
class SoftwareUpdate;
class SoundFieldPage;
class StatusStrip;
class SystemVolumeWatcher;
class Translation;
class VoiceEffectsPage;
class VolumePage;
class WindowTimers;

class PageSet {
public:
    // Starts the timers, the volume watcher and the device event listener at their places in the volume
    // page's set-up.
    PageSet(PageContext context, WindowTimers &timers, const QString &curveFilePath);
    ~PageSet();

    // The two ends of what comes from other threads, in the order of the device's shutdown.
    void endListener();
    void endVolumeWatcher();

    // The receiver may have come or gone.
    void devicesChanged();

    // The pages set their texts anew after every change of language.
    void follow(const Translation &translation);

    // The update check of start-up; a new version presses updateButton.
    void checkForUpdateAtStart(QPushButton &updateButton);

    // Position 0..3 of the room page's hidden combo box.
    void selectRoomMode(int index);
    bool upgradeInProgress() const;
    const BatteryStatus &battery() const { return *battery_; }

private:
    void setUpVolume(PageContext context);

    WindowTimers &timers_;
    // In the order of construction.
    std::unique_ptr<VolumePage> volume_;
    std::unique_ptr<SystemVolumeWatcher> volumeWatcher_;
    std::unique_ptr<DeviceEventListener> listener_;
    std::unique_ptr<SampleRatePage> sampleRate_;
    std::unique_ptr<ExclusiveEffects> exclusiveEffects_;
    std::unique_ptr<EqualizerPage> equalizer_;
    std::unique_ptr<RoomEffectsPage> roomEffects_;
    std::unique_ptr<SoundFieldPage> soundField_;
    std::unique_ptr<MicrophonePage> microphone_;
    std::unique_ptr<VoiceEffectsPage> voiceEffects_;
    std::unique_ptr<NoiseReductionPage> noiseReduction_;
    std::unique_ptr<LedPage> led_;
    std::unique_ptr<BatteryStatus> battery_;
    std::unique_ptr<StatusStrip> statusStrip_;
    std::unique_ptr<FirmwarePage> firmware_;
    std::unique_ptr<SoftwareUpdate> update_;
};
