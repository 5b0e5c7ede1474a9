// Sound-field positioning: the turning drawing, the speakers' levels with their markers, and the buttons that
// turn, hold, centre and restore. Every step of a slider is one block write. GUI thread.
#pragma once

#include "ui/pages/ExclusiveEffects.h"
#include "ui/pages/PageContext.h"

#include <array>
#include <QObject>
#include <QPoint>

class QLabel;
class QPushButton;
class QSlider;
class SoundFieldView;

class SoundFieldPage : public QObject {
    Q_OBJECT

public:
    SoundFieldPage(PageContext context, ExclusiveEffects &effects, QTimer &rotationTimer, QObject *parent);

    // Writes the levels' labels again, which the form resets.
    void retranslated();
    // Shows the levels that the block holds; sends nothing.
    void showStored();

private:
    struct Speaker {
        QSlider *slider;
        QLabel *value;
        QLabel *marker;
        QPoint reference; // in the picture's parent
    };

    void findSpeakers();
    void findFieldButtons();
    void connectControls();
    void connectFieldButton(int number, void (SoundFieldPage::*action)());

    void moveSpeaker(size_t speaker, int level);
    void moveMaster(int level);
    void stepLevels(int step);

    void turnClockwise() { turn(-1); }
    void turnAnticlockwise() { turn(1); }
    void turn(int step);
    void hold();
    void centre();
    void restoreDefaults();
    void centreField();

    void setAllLevels(int level);
    void saveAngleMode(AngleMode mode);
    void showLevels();
    void showMaster(int level);
    void placeMarkers();
    void showAngle();
    bool isOn() const { return effects_.isOn(Effect::SoundField); }

    PageContext context_;
    ExclusiveEffects &effects_;
    std::array<Speaker, sizeof(SoundBlock::speakerLevel)> speakers_{};
    QVector<QWidget *> fieldButtons_; // Page4_P_1..5
    QWidget *currentFieldButton_ = nullptr;
    SoundFieldView *view_ = nullptr;
};
