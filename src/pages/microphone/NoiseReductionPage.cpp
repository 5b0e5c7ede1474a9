#include "pages/microphone/NoiseReductionPage.h"

#include "pages/StyleSheetText.h"
#include "ui_demoClass.h"

namespace {
constexpr int kDefaultLevel = 50;
} // namespace

NoiseReductionPage::NoiseReductionPage(PageContext context) : context_(context) {
    setUpControls();
    connectControls();
}

void NoiseReductionPage::setUpControls() {
    context_.form.horizontalSlider_17->setRange(0, 100);
    showLevel();
    showNoiseReduction();
}

void NoiseReductionPage::connectControls() {
    Ui::demoClass &form = context_.form;
    connect(form.pushButton_29, &QPushButton::clicked, this, &NoiseReductionPage::toggleNoiseReduction);
    connect(form.horizontalSlider_17, &QSlider::valueChanged, this, &NoiseReductionPage::changeLevel);
    connect(form.pushButton_31, &QPushButton::clicked, this, &NoiseReductionPage::resetLevel);
}

void NoiseReductionPage::toggleNoiseReduction() {
    context_.device.system.head.noiseReductionOn ^= 1;
    showNoiseReduction();
    context_.device.saveType1Block();
}

void NoiseReductionPage::changeLevel(int level) {
    SystemHead &head = context_.device.system.head;
    if (context_.volume.volumeUpdating || !switchedOn(head.noiseReductionOn))
        return;
    head.noiseLevel = level;
    context_.device.saveType1Block();
}

// The default reaches the device with the next write of the block, not by a write of its own.
void NoiseReductionPage::resetLevel() {
    context_.device.system.head.noiseLevel = kDefaultLevel;
    showLevel();
}

void NoiseReductionPage::showLevel() {
    const FlagScope filling(context_.volume.volumeUpdating);
    context_.form.horizontalSlider_17->setValue(context_.device.system.head.noiseLevel);
}

void NoiseReductionPage::showNoiseReduction() {
    Ui::demoClass &form = context_.form;
    const bool on = switchedOn(context_.device.system.head.noiseReductionOn);
    StyleSheetText::setProperty(*form.label_208, QStringLiteral("border-image"),
                                on ? QStringLiteral("url(:/right/png/jiangzao_pic.png)")
                                   : QStringLiteral("url(:/right/png/jiangzao_pic_nor.png)"));
    StyleSheetText::showSwitch(*form.pushButton_29, on);
    form.widget_50->setEnabled(on);
}
