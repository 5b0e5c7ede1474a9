#include "pages/effects/ExclusiveEffects.h"

#include "pages/StyleSheetText.h"

ExclusiveEffects::ExclusiveEffects(PageContext context) : context_(context) {
    connect(&context_.device, &DeviceState::soundReplaced, this, &ExclusiveEffects::showStored);
}

void ExclusiveEffects::attach(Effect effect, QAbstractButton &switchButton, QWidget *caption,
                              QVector<QWidget *> panel) {
    controls_.push_back({effect, &switchButton, caption, std::move(panel)});
    show(controls_.back());
    connect(&switchButton, &QAbstractButton::clicked, this, [this, effect] { toggle(effect); });
}

void ExclusiveEffects::toggle(Effect effect) {
    ExclusiveGroup::toggle(context_.device.sound, effect);
    emit changed();
    showAll();
    context_.device.saveType2Block();
}

void ExclusiveEffects::showStored() {
    emit changed();
    showAll();
}

bool ExclusiveEffects::isOn(Effect effect) const {
    return ExclusiveGroup::isOn(context_.device.sound, effect);
}

void ExclusiveEffects::showAll() const {
    for (const Controls &controls : controls_)
        show(controls);
}

void ExclusiveEffects::show(const Controls &controls) const {
    const bool on = isOn(controls.effect);
    StyleSheetText::showSwitch(*controls.switchButton, on);
    if (controls.caption)
        StyleSheetText::showCaption(*controls.caption, on);
    for (QWidget *widget : controls.panel)
        widget->setEnabled(on);
}
