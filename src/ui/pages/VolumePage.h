// Speaker volume: master, left and right channel, mute, channel lock and the hidden page switch, together
// with the status strip's master slider. Every step goes to the Windows endpoint and, as one whole block, to
// the headset. GUI thread only.
#pragma once

#include "ui/pages/PageContext.h"
#include "ui/pages/VolumeBalance.h"

#include <cstdint>
#include <functional>
#include <QObject>

class SystemVolumeWatcher;

class VolumePage : public QObject {
    Q_OBJECT

public:
    // What the page's set-up starts at its place in the order; both belong to the main window.
    struct Services {
        std::function<SystemVolumeWatcher *()> startTimersAndWatcher;
        std::function<void()> startListener; // the device event thread
    };

    VolumePage(PageContext context, Services services, QObject *parent);

    // Writes levels back into labels and sliders after the form's texts were set anew; sends nothing.
    void retranslated();

private:
    enum class VolumeSource { PageMaster = 0, Left = 1, Right = 2, SecondMaster = 3, SystemWatcher = 4 };
    enum class Echo { Ignored, Followed }; // of a volume that the page itself sets

    void prepareControls();
    void follow(const SystemVolumeWatcher &watcher);
    void muteSilentMaster();
    void showPageSwitch();
    void loadLock();
    void connectControls();

    void sliderMoved(VolumeSource source, int value);
    void systemVolumeChanged(int newVolume);
    void systemMuteChanged(bool isMuted);
    void toggleMute();
    void togglePageSwitch();
    void toggleLock();

    // Brings master and channels in line after one of them got a new value, then sends everything.
    void applyVolumeChange(VolumeSource source);
    void applyMaster(VolumeSource source);
    void applyLeft();
    void applyRight();
    void muteByMaster();

    VolumeBalance::Levels levels() const;
    void setLevels(const VolumeBalance::Levels &levels);
    void setEndpointVolume(Echo echo);
    void setMuted(bool muted);

    void showMaster();
    void showLeft();
    void showRight();
    void showMute();
    void showLock();

    PageContext context_;
    uint32_t volumeLocked = 0; // 0/1, kept in the registry
};
