// The voice-effect page: a switch, four effects to choose from, echo and effect level. Its settings are bytes
// 20..22 and 26 of the system block.
#pragma once

#include "pages/PageContext.h"

#include <QObject>

class VoiceEffectsPage : public QObject {
    Q_OBJECT

public:
    explicit VoiceEffectsPage(PageContext context);

private:
    void setUpControls();
    void connectControls();

    void chooseVoice(int voice); // 1..4
    void toggleEffects();
    void changeEcho(bool on);
    void changeEffectLevel(int level);
    void stepEffectLevel(int step);

    void showVoice();
    void showEffects();

    PageContext context_;
};
