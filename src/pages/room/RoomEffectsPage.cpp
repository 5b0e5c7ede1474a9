#include "pages/room/RoomEffectsPage.h"

#include "pages/FindControl.h"
#include "pages/StyleSheetText.h"
#include "ui_demoClass.h"

namespace {

constexpr int kRooms = 3;
constexpr int kPositions = 4;

void moveMark(QPushButton *&marked, QPushButton *next) {
    if (marked && marked != next)
        StyleSheetText::showMarked(*marked, false);
    if (next)
        StyleSheetText::showMarked(*next, true);
    marked = next;
}

} // namespace

RoomEffectsPage::RoomEffectsPage(PageContext context, ExclusiveEffects &effects)
    : context_(context), effects_(effects) {
    const Ui::demoClass &form = context_.form;
    effects_.attach(Effect::VirtualSurround, *form.pushButton_32, form.label_148, {});
    effects_.attach(Effect::RoomEffect, *form.pushButton_33, form.label_150,
                    {form.btn_room1, form.btn_room2, form.btn_room3});
    // The spatial-sound page, which the navigation does not offer, has a second switch for the room effect.
    effects_.attach(Effect::RoomEffect, *form.pushButton_28, nullptr, {});
    for (QWidget *hidden :
         std::initializer_list<QWidget *>{form.comboBox_2, form.pushButton_27, form.label_175})
        hidden->hide();
    showStored();
    connectControls();
}

void RoomEffectsPage::showStored() {
    const Ui::demoClass &form = context_.form;
    const SoundBlock &sound = context_.device.sound;
    moveMark(markedRoom_, roomButton(sound.room));
    showPosition(sound.position);
    StyleSheetText::showSwitch(*form.pushButton_27, switchedOn(sound.hiddenSwitch));
}

void RoomEffectsPage::connectControls() {
    connect(&context_.device, &DeviceState::soundReplaced, this, &RoomEffectsPage::showStored);
    for (int room = 1; room <= kRooms; ++room)
        connect(roomButton(room), &QPushButton::clicked, this, [this, room] { chooseRoom(room); });
    for (int position = 1; position <= kPositions; ++position)
        connect(positionButton(position), &QPushButton::clicked, this,
                [this, position] { choosePosition(position); });
}

void RoomEffectsPage::chooseRoom(int room) {
    SoundBlock &sound = context_.device.sound;
    if (!effects_.isOn(Effect::RoomEffect) || room == sound.room)
        return;
    moveMark(markedRoom_, roomButton(room));
    sound.room = static_cast<uint8_t>(room);
    context_.device.saveType2Block();
}

void RoomEffectsPage::choosePosition(int position) {
    showPosition(position);
    context_.device.sound.position = static_cast<uint8_t>(position);
    context_.device.saveType2Block();
}

void RoomEffectsPage::selectMode(int index) {
    if (!context_.volume.volumeUpdating && index >= 0 && index < kPositions)
        choosePosition(index + 1);
}

// The hidden box is moved along, without its handler: it must not send the same choice again.
void RoomEffectsPage::showPosition(int position) {
    moveMark(markedPosition_, positionButton(position));
    const FlagScope filling(context_.volume.volumeUpdating);
    if (markedPosition_)
        context_.form.comboBox_2->setCurrentIndex(position - 1);
}

QPushButton *RoomEffectsPage::roomButton(int room) const {
    return room < 1 || room > kRooms
               ? nullptr
               : &findControl<QPushButton>(context_.window, QStringLiteral("btn_room%1").arg(room));
}

QPushButton *RoomEffectsPage::positionButton(int position) const {
    return position < 1 || position > kPositions
               ? nullptr
               : &findControl<QPushButton>(context_.window, QStringLiteral("btn_env%1").arg(position));
}
