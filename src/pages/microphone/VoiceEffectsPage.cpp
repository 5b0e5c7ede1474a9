#include "pages/microphone/VoiceEffectsPage.h"

#include "pages/StyleSheetText.h"
#include "ui_demoClass.h"

#include <array>

namespace {

constexpr int kDefaultEffectLevel = 50;

std::array<QPushButton *, 4> voiceButtons(const Ui::demoClass &form) {
    return {form.btn_mh1, form.btn_mh2, form.btn_mh3, form.btn_mh4};
}

} // namespace

VoiceEffectsPage::VoiceEffectsPage(PageContext context) : context_(context) {
    setUpControls();
    connectControls();
}

void VoiceEffectsPage::setUpControls() {
    Ui::demoClass &form = context_.form;
    const SystemHead &head = context_.device.system.head;

    showVoice();
    showEffects();
    form.horizontalSlider_15->setRange(0, 100);
    form.horizontalSlider_15->setValue(head.effectLevel);
    form.checkBox_5->setChecked(head.echoOn != 0);
}

void VoiceEffectsPage::connectControls() {
    Ui::demoClass &form = context_.form;
    int voice = 0;
    for (const QPushButton *button : voiceButtons(form)) {
        ++voice;
        connect(button, &QPushButton::clicked, this, [this, voice] { chooseVoice(voice); });
    }
    connect(form.pushButton_8, &QPushButton::clicked, this, &VoiceEffectsPage::toggleEffects);
    // The check box over the voices says and does the same as the switch.
    connect(form.checkBox_6, &QCheckBox::toggled, this, [this](bool on) {
        if (on != switchedOn(context_.device.system.head.voiceEffectOn))
            toggleEffects();
    });
    connect(form.checkBox_5, &QCheckBox::toggled, this, &VoiceEffectsPage::changeEcho);
    connect(form.horizontalSlider_15, &QSlider::valueChanged, this, &VoiceEffectsPage::changeEffectLevel);
    connect(form.Page4_P_8, &QPushButton::clicked, this, [this] { stepEffectLevel(-1); });
    connect(form.Page4_P_9, &QPushButton::clicked, this, [this] { stepEffectLevel(+1); });
    connect(form.pushButton_30, &QPushButton::clicked, this,
            [this] { context_.form.horizontalSlider_15->setValue(kDefaultEffectLevel); });
}

void VoiceEffectsPage::chooseVoice(int voice) {
    SystemHead &head = context_.device.system.head;
    if (!switchedOn(head.voiceEffectOn))
        return;
    head.voiceEffect = static_cast<uint8_t>(voice);
    showVoice();
    context_.device.saveType1Block();
}

void VoiceEffectsPage::toggleEffects() {
    context_.device.system.head.voiceEffectOn ^= 1;
    showEffects();
    context_.device.saveType1Block();
}

void VoiceEffectsPage::changeEcho(bool on) {
    context_.device.system.head.echoOn = on;
    context_.device.saveType1Block();
}

void VoiceEffectsPage::changeEffectLevel(int level) {
    context_.device.system.head.effectLevel = static_cast<uint8_t>(level);
    context_.device.saveType1Block();
}

// The slider's own change handler stores and sends the level.
void VoiceEffectsPage::stepEffectLevel(int step) {
    QSlider &slider = *context_.form.horizontalSlider_15;
    slider.setValue(slider.value() + step);
}

void VoiceEffectsPage::showVoice() {
    int voice = 0;
    for (QPushButton *button : voiceButtons(context_.form))
        StyleSheetText::showMarked(*button, ++voice == context_.device.system.head.voiceEffect);
}

void VoiceEffectsPage::showEffects() {
    Ui::demoClass &form = context_.form;
    const bool on = switchedOn(context_.device.system.head.voiceEffectOn);
    StyleSheetText::showSwitch(*form.pushButton_8, on);
    form.checkBox_6->setChecked(on);
    const std::array<QWidget *, 3> panel{form.widget_41, form.checkBox_5, form.widget_46};
    for (QWidget *part : panel)
        part->setEnabled(on);
}
