// Virtual 7.1 and the room effect with its three rooms and four positions. Every choice is one block write.
#pragma once

#include "pages/effects/ExclusiveEffects.h"
#include "pages/PageContext.h"

#include <QObject>

class QPushButton;

class RoomEffectsPage : public QObject {
    Q_OBJECT

public:
    RoomEffectsPage(PageContext context, ExclusiveEffects &effects);

    // Selects position index + 1, as the hidden position box says it; other indices than 0..3 are ignored.
    void selectMode(int index);

private:
    void showStored();
    void connectControls();
    void chooseRoom(int room);
    void choosePosition(int position);
    void showPosition(int position);

    QPushButton *roomButton(int room) const;         // null for a room that does not exist
    QPushButton *positionButton(int position) const; // likewise

    PageContext context_;
    ExclusiveEffects &effects_;
    QPushButton *markedRoom_ = nullptr;
    QPushButton *markedPosition_ = nullptr;
};
