// The panel's own copy of the device's settings, which is the truth while the program runs, and the three
// whole-block writes with their copy rules. One object, owned by the main window; GUI thread only.
#pragma once

#include "device/PropertyBlocks.h"

#include <atomic>
#include <QObject>

class DeviceState : public QObject {
    Q_OBJECT

public:
    DeviceInfo info{};
    SystemBlock system{};
    SoundBlock sound{};
    ExtBlock extension{};
    UsbIds usbIds{};
    EqCurveStore curves{};

    // Copies SystemBlock bytes 0..31 to 32..63, then writes SystemBlock as type 1.
    void saveType1Block();
    // Copies SoundBlock into SystemBlock bytes 64..638, then writes SoundBlock as type 2; returns the result.
    int32_t saveType2Block();
    // Writes ExtBlock as type 3 as it stands.
    void saveType3Block();

    // Takes the device's current sound image (DeviceInfo bytes 32..606) back into SoundBlock.
    void refreshSoundBlock();

    // The switch of SoundBlock byte 1 for the device event listener's thread: follows every write of the
    // block and every refresh.
    std::atomic<uint8_t> virtualSurroundOn{0};

signals:
    void written();       // after every write
    void soundReplaced(); // by another image from the device: all who show it show it again

private:
    int32_t afterWrite(int type, int32_t result);

    int32_t lastResult_ = 0; // of a write
};
