#include "pages/equalizer/EqualizerPage.h"

#include "device/EqCurveFile.h"
#include "device/EqCurves.h"
#include "helpers/MessageBoxes.h"
#include "pages/ButtonHighlight.h"
#include "pages/equalizer/EqCurveView.h"
#include "pages/FindControl.h"
#include "ui_demoClass.h"

#include <QCoreApplication>
#include <QLineEdit>

namespace {

constexpr int kFirstBandName = 10; // verticalSlider_10 is the lowest band
constexpr int kZeroGain = 20;      // slider value of 0 dB
constexpr int kSliderMaximum = 40;
constexpr uint32_t kPressedColour = 0x6E6E6E;
constexpr uint32_t kOtherColour = 0x000000;

// The sign is always shown, but for zero.
QString gainText(int gain) {
    return gain > 0 ? QLatin1Char('+') + QString::number(gain) : QString::number(gain);
}

// Not QString::fromUtf16, which would take a leading U+FEFF for a byte order mark.
QString fromUnits(const std::u16string &name) {
    return QString(reinterpret_cast<const QChar *>(name.data()), static_cast<int>(name.size()));
}

} // namespace

EqualizerPage::EqualizerPage(PageContext context, ExclusiveEffects &effects, std::wstring curveFilePath)
    : context_(context), effects_(effects), curveFilePath_(std::move(curveFilePath)),
      exchange_(context, effects) {
    findControls();
    prepareCurveNames();
    effects_.attach(Effect::Equalizer, *context_.form.pushButton_6, nullptr,
                    {context_.form.widget_21, context_.form.widget_24});
    connectControls();
    retranslated();
    fillCurveNames();
}

void EqualizerPage::findControls() {
    QVector<QSlider *> sliders;
    for (size_t band = 0; band < bands_.size(); ++band) {
        const int name = kFirstBandName + static_cast<int>(band);
        bands_[band] = {&findControl<QSlider>(context_.window, QStringLiteral("verticalSlider_%1").arg(name)),
                        &findControl<QLabel>(context_.window, QStringLiteral("jhq_lab_%1").arg(name))};
        bands_[band].slider->setRange(0, kSliderMaximum);
        sliders.push_back(bands_[band].slider);
    }
    new EqCurveView(sliders);
    for (size_t i = 0; i < presets_.size(); ++i)
        presets_[i] = &findControl<QPushButton>(context_.window, QStringLiteral("btn_jhq%1").arg(i));
}

// The box's text is a name to save or delete. It must not turn into another one while it is typed, and
// leaving it (by pressing the save button, for instance) must not replace the gains by those of a curve of
// that name.
void EqualizerPage::prepareCurveNames() {
    QComboBox &names = *context_.form.comboBox;
    names.setEditable(true);
    names.setInsertPolicy(QComboBox::NoInsert);
    names.setCompleter(nullptr);
    names.lineEdit()->setMaxLength(EqCurves::kNameUnits);
    disconnect(names.lineEdit(), &QLineEdit::editingFinished, &names, nullptr);
    connect(names.lineEdit(), &QLineEdit::returnPressed, this, [this] {
        QComboBox &box = *context_.form.comboBox;
        const int item = box.findText(box.currentText(), Qt::MatchExactly | Qt::MatchCaseSensitive);
        if (item < 0)
            return;
        box.setCurrentIndex(item);
        recallCurve(box.currentText());
    });
}

void EqualizerPage::connectControls() {
    const Ui::demoClass &form = context_.form;
    connect(form.pushButton_26, &QPushButton::clicked, this, &EqualizerPage::resetCurve);
    for (size_t i = 0; i < presets_.size(); ++i)
        connect(presets_[i], &QPushButton::clicked, this, [this, i] { choosePreset(static_cast<int>(i)); });
    for (size_t band = 0; band < bands_.size(); ++band)
        connect(bands_[band].slider, &QSlider::valueChanged, this,
                [this, band](int value) { moveBand(band, value); });
    connect(form.pushButton_25, &QPushButton::clicked, this, &EqualizerPage::saveCurve);
    connect(form.pushButton_24, &QPushButton::clicked, this, &EqualizerPage::deleteCurve);
    connect(&exchange_, &EqCurveExchange::imported, this, &EqualizerPage::importCurve);
    // By name, since naming the overload that carries the text warns of its deprecation.
    connect(form.comboBox, SIGNAL(activated(QString)), this, SLOT(recallCurve(QString)));
}

void EqualizerPage::retranslated() {
    // Two names begin or end with Kangxi radicals (U+2F84, U+2F8F, U+2F08), which look like ordinary
    // ideographs.
    context_.form.btn_jhq9->setText(QCoreApplication::translate("demoClass", "⾄臻流⾏"));
    context_.form.btn_jhq10->setText(QCoreApplication::translate("demoClass", "⼈声增强"));
    showCurveName();
    refreshSilently();
}

void EqualizerPage::fillCurveNames() {
    const EqCurveStore &store = context_.device.curves;
    QComboBox &names = *context_.form.comboBox;
    for (int i = 0; i < store.count; ++i)
        names.addItem(fromUnits(EqCurves::nameOf(store.curve[i])));
    if (store.current < store.count)
        names.setCurrentIndex(store.current);
}

void EqualizerPage::moveBand(size_t band, int sliderValue) {
    if (context_.volume.volumeUpdating)
        return;
    const int gain = sliderValue - kZeroGain;
    bands_[band].gain->setText(gainText(gain));
    context_.device.extension.gain[band] = static_cast<int8_t>(gain);
    sendGains();
}

void EqualizerPage::choosePreset(int index) {
    if (!isOn())
        return;
    QPushButton *pressed = presets_[static_cast<size_t>(index)];
    ButtonHighlight::mark({presets_.begin(), presets_.end()}, pressed, kPressedColour, kOtherColour);
    eqPresetButton = pressed;
    eqPresetIndex = index;
    applyEqPreset(index);
    refreshSilently();
}

// Back to the last chosen preset; to a flat curve only while none was chosen.
void EqualizerPage::resetCurve() {
    if (!isOn())
        return;
    applyEqPreset(eqPresetButton ? eqPresetIndex : EqPresets::kDefault);
    refreshSilently();
}

void EqualizerPage::recallCurve(const QString &name) {
    if (!isOn())
        return;
    if (!EqCurves::recall(context_.device.curves, name.toStdU16String(), context_.device.extension)) {
        ShowMessage(QStringLiteral("not found"), nullptr, MB_OK);
        return;
    }
    refreshEqSliders();
    showCurveName();
}

void EqualizerPage::saveCurve() {
    if (!isOn())
        return;
    QComboBox &names = *context_.form.comboBox;
    const QString name = names.currentText();
    const auto writeFile = [this](const EqCurveStore &store) { EqCurveFile::save(curveFilePath_, store); };
    switch (
        EqCurves::save(context_.device.curves, name.toStdU16String(), context_.device.extension, writeFile)) {
    case EqCurves::SaveResult::Added:
        names.addItem(name);
        break;
    case EqCurves::SaveResult::Full:
        ShowMessage(QStringLiteral("too many EQ info to save"), nullptr, MB_OK);
        break;
    case EqCurves::SaveResult::Replaced:
        break;
    }
    showCurveName();
}

void EqualizerPage::deleteCurve() {
    if (!isOn())
        return;
    QComboBox &names = *context_.form.comboBox;
    EqCurveStore &store = context_.device.curves;
    const QString name = names.currentText();
    const int item = names.findText(name, Qt::MatchExactly | Qt::MatchCaseSensitive);
    if (item >= 0)
        names.removeItem(item);
    EqCurves::remove(store, name.toStdU16String());
    names.setCurrentIndex(store.current);
    EqCurveFile::save(curveFilePath_, store);
    showCurveName();
}

// The name can be saved, but is not yet that of a stored curve.
void EqualizerPage::importCurve(const EqCurveText::Gains &gains, const QString &name) {
    applyGains(gains);
    refreshSilently();
    QString kept = name.left(EqCurves::kNameUnits);
    if (!kept.isEmpty() && kept.at(kept.size() - 1).isHighSurrogate()) // half a character
        kept.chop(1);
    context_.form.comboBox->setEditText(kept);
}

void EqualizerPage::applyEqPreset(int index) {
    applyGains(EqPresets::kGains[static_cast<size_t>(index)]);
}

void EqualizerPage::applyGains(const EqPresets::Gains &gains) {
    std::copy(gains.begin(), gains.end(), context_.device.extension.gain);
    sendGains();
}

void EqualizerPage::refreshEqSliders() {
    for (size_t band = 0; band < bands_.size(); ++band) {
        bands_[band].slider->setValue(context_.device.extension.gain[band] + kZeroGain);
        bands_[band].gain->setText(gainText(context_.device.extension.gain[band]));
    }
}

void EqualizerPage::refreshSilently() {
    const FlagScope filling(context_.volume.volumeUpdating);
    refreshEqSliders();
}

// Of the gains as they stand, not of what was chosen last.
QString EqualizerPage::curveName() const {
    const ExtBlock &gains = context_.device.extension;
    const EqCurveStore &store = context_.device.curves;
    if (const std::optional<size_t> preset = EqPresets::find(gains))
        return presets_[*preset]->text();
    if (const std::optional<int> stored = EqCurves::findGains(store, gains))
        return fromUnits(EqCurves::nameOf(store.curve[*stored]));
    return QCoreApplication::translate("demoClass", "自定义");
}

void EqualizerPage::showCurveName() {
    QLabel &label = *context_.form.jhq_lab_20;
    label.ensurePolished(); // has its font
    label.setText(label.fontMetrics().elidedText(curveName(), Qt::ElideRight, label.width()));
}

void EqualizerPage::sendGains() {
    context_.device.saveType3Block();
    context_.device.refreshSoundBlock();
    showCurveName();
}
