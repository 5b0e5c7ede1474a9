// Speaker volume: master, left and right channel, mute, channel lock and the hidden page switch, together
// with the status strip's master slider. Every step goes to the Windows endpoint and, as one whole block, to
// the headset. GUI thread only.
#pragma once

#include "pages/PageContext.h"
#include "pages/volume/VolumeBalance.h"
#include "pages/volume/VolumeEchoes.h"

#include <cstdint>
#include <QObject>

class SystemVolumeWatcher;

class VolumePage : public QObject {
    Q_OBJECT

public:
    // Set-up in three steps, between which the main window starts what is its own. First the controls are
    // filled,
    explicit VolumePage(PageContext context);
    // then the page follows Windows' volume,
    void follow(const SystemVolumeWatcher &watcher);
    // and last it sends the mute state and listens to its controls.
    void start();

    // Writes levels back into labels and sliders after the form's texts were set anew; sends nothing.
    void retranslated();

private:
    enum class VolumeSource { PageMaster = 0, Left = 1, Right = 2, SecondMaster = 3, SystemWatcher = 4 };
    using Echo = VolumeEchoes::Echo;

    void prepareControls();
    void muteSilentMaster();
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
    void applyChannel(VolumeBalance::Channel channel);
    void muteByMaster();

    VolumeBalance::Levels levels() const;
    void setLevels(const VolumeBalance::Levels &levels);
    void setEndpointVolume(Echo echo);
    void setMuted(bool muted);

    void showMaster();
    void showLeft();
    void showRight();
    void showLevels();
    void showStored(); // all that the block holds
    void showMute();
    void showPageSwitch();
    void showLock();

    PageContext context_;
    VolumeEchoes echoes_;
    uint32_t volumeLocked = 0; // 0/1, kept in the registry
};
