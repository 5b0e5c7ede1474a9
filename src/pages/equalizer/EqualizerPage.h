// The ten-band equalizer: sliders, twelve presets, reset, and the user's named curves. Every slider step is
// one block write; while the equalizer is off only the sliders still send. GUI thread.
#pragma once

#include "pages/effects/ExclusiveEffects.h"
#include "pages/equalizer/EqCurveExchange.h"
#include "pages/equalizer/EqPresets.h"
#include "pages/PageContext.h"

#include <array>
#include <QObject>
#include <string>

class QLabel;
class QPushButton;
class QSlider;

class EqualizerPage : public QObject {
    Q_OBJECT

public:
    // The curves of the file at curveFilePath are already loaded.
    EqualizerPage(PageContext context, ExclusiveEffects &effects, std::wstring curveFilePath);

    // Writes the texts that the form does not hold, and the gains, which it resets.
    void retranslated();

private slots:
    // Sends the stored curve of that name through the sliders; a box says when there is none.
    void recallCurve(const QString &name);

private:
    struct Band {
        QSlider *slider; // gain + 20
        QLabel *gain;
    };

    void findControls();
    void prepareCurveNames();
    void connectControls();
    void fillCurveNames();

    void moveBand(size_t band, int sliderValue);
    void choosePreset(int index);
    void resetCurve();
    void saveCurve();
    void deleteCurve();
    void importCurve(const EqCurveText::Gains &gains, const QString &name);

    void applyEqPreset(int index);
    void applyGains(const EqPresets::Gains &gains);
    void refreshEqSliders();
    void refreshSilently(); // without the sliders' handlers sending
    QString curveName() const;
    void showCurveName();
    void sendGains();
    bool isOn() const { return effects_.isOn(Effect::Equalizer); }

    PageContext context_;
    ExclusiveEffects &effects_;
    std::wstring curveFilePath_;
    std::array<Band, sizeof(ExtBlock::gain)> bands_{};
    std::array<QPushButton *, EqPresets::kCount> presets_{};
    QPushButton *eqPresetButton = nullptr; // the preset pressed last
    int eqPresetIndex = 0;
    EqCurveExchange exchange_;
};
