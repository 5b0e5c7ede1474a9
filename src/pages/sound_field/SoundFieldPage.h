// Sound-field positioning: the turning drawing, the speakers' levels with their markers, and the buttons that
// turn, hold, centre and restore. Every step of a slider is one block write. GUI thread.
#pragma once

#include "pages/effects/ExclusiveEffects.h"
#include "pages/PageContext.h"
#include "pages/sound_field/FieldRotation.h"

#include <array>
#include <QObject>
#include <QPoint>

class QLabel;
class QPushButton;
class QSlider;

class SoundFieldPage : public QObject {
    Q_OBJECT

public:
    SoundFieldPage(PageContext context, ExclusiveEffects &effects, QTimer &rotationTimer);

    // Writes the levels' labels again, which the form resets.
    void retranslated();

private:
    struct Speaker {
        QSlider *slider;
        QLabel *value;
        QLabel *marker;
        QPoint reference; // in the picture's parent
    };

    void findSpeakers();
    void showStored(); // the levels and the angle's mode that the block holds
    void connectLevels();
    void connectFieldButtons();

    void moveSpeaker(size_t speaker, int level);
    void moveMaster(int level);
    void stepLevels(int step);

    void setAngleMode(AngleMode mode);
    void centre();
    void restoreDefaults();
    void followAngleMode();

    void setAllLevels(int level);
    void showLevels();
    void showMaster(int level);
    void placeMarker(const Speaker &speaker);
    void placeMarkers();
    void markFieldButton(int number);

    PageContext context_;
    ExclusiveEffects &effects_;
    std::array<Speaker, sizeof(SoundBlock::speakerLevel)> speakers_{};
    FieldRotation rotation_;
};
