#include "pages/status/StatusStrip.h"

#include "pages/StyleSheetText.h"
#include "ui_demoClass.h"

namespace {

// The grey is as readable on the strip as text has to be (contrast 4 : 1), unlike the captions' own #444645.
void light(QLabel &label, bool on) {
    StyleSheetText::setProperty(label, QStringLiteral("color"),
                                on ? QStringLiteral("#FFFFFF") : QStringLiteral("#7a7a7a"));
}

} // namespace

StatusStrip::StatusStrip(PageContext context) : context_(context) {
    connect(&context_.device, &DeviceState::written, this, &StatusStrip::refreshSoon);
    connect(&context_.device, &DeviceState::soundReplaced, this, &StatusStrip::refresh);
    refresh();
}

void StatusStrip::refreshSoon() {
    if (refreshPending_)
        return;
    refreshPending_ = true;
    QMetaObject::invokeMethod(this, &StatusStrip::refresh, Qt::QueuedConnection);
}

void StatusStrip::refresh() {
    refreshPending_ = false;
    const Ui::demoClass &form = context_.form;
    const SoundBlock &sound = context_.device.sound;
    const SystemHead &head = context_.device.system.head;
    const struct {
        QLabel *caption, *value;
        bool on;
    } functions[] = {
        {form.label_138, form.label_149, sound.muted == 0},                  // speaker
        {form.label_151, form.label_154, switchedOn(sound.equalizerOn)},     // equalizer
        {nullptr, form.label_158, switchedOn(sound.soundFieldOn)},           // sound-field positioning
        {form.label_139, form.label_147, head.micMuted == 0},                // microphone
        {form.label_156, form.label_153, switchedOn(head.voiceEffectOn)},    // voice effects
        {form.label_159, form.label_155, switchedOn(head.noiseReductionOn)}, // noise reduction
    };
    for (const auto &function : functions) {
        if (function.caption)
            light(*function.caption, function.on);
        light(*function.value, function.on);
    }
}
