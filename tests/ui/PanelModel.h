// The panel's pages once more, as small as can be: what each input does to the settings, which calls it
// makes, what is stored and what is shown then. Inputs are named by their controls.
#pragma once

#include "device/PropertyBlocks.h"

#include <array>
#include <map>
#include <QString>
#include <string>
#include <vector>

// What a colour field is given, and the number that it then shows and sends.
struct ColourText {
    const char *text;
    int number;
};
constexpr ColourText kColourTexts[] = {{"0", 0}, {"1", 1},      {"254", 254}, {"300", 255},        {"-5", 0},
                                       {"", 0},  {" 012 ", 12}, {"1e2", 0},   {"99999999999", 255}};

// QString::fromStdU16String would take a leading U+FEFF for a byte order mark.
inline QString asText(const std::u16string &units) {
    return QString(reinterpret_cast<const QChar *>(units.data()), static_cast<int>(units.size()));
}

class PanelModel {
public:
    using Report = std::array<uint8_t, 64>;

    // What is there before the panel starts.
    struct World {
        DeviceInfo device{};
        EqCurveStore curveFile{};
        bool locked = false;      // the stored channel lock
        bool taskRuns = false;    // what the library says about the helper process
        bool imageFollows = true; // a write shows in the device's record
    };

    // A start of the panel.
    explicit PanelModel(const World &world);
    void end();

    // value: a slider's, a list's index, an index of kColourTexts; unused for buttons. False: not a control
    // of the pages. curveName: what stands in the curves' box.
    bool take(const std::string &control, int value, const std::u16string &curveName);

    // The effects of the start or of the last inputs.
    std::vector<std::string> calls;
    std::vector<Report> reports;
    std::string box; // text of the message box, if one came

    World world; // as the inputs left it
    SystemBlock system{}, sentSystem{};
    SoundBlock sound{}, sentSound{};
    ExtBlock extension{}, sentExtension{};
    EqCurveStore curves{};
    int turning() const; // degrees a tick of the sound field's clock

    // "control.property": its value, or for styleSheet a part of it.
    std::map<std::string, std::string> shown() const;

private:
    // A control that was used: "btn_jhq7" is number 7 of its row.
    struct Input {
        std::string control, row;
        int number, value;

        template<typename... Names>
        bool is(Names... names) const {
            return ((control == names) || ...);
        }
    };
    class View;

    bool takeSwitch(const Input &input);
    bool takeVolume(const Input &input);
    bool takeEqualizer(const Input &input);
    bool takeCurve(const Input &input, const std::u16string &name);
    bool takeChoice(const Input &input);
    bool takeSoundField(const Input &input);
    bool takeMicrophone(const Input &input);
    bool takeVoice(const Input &input);
    bool takeLight(const Input &input);
    bool takeOther(const Input &input);

    void showSound(View &view) const;
    void showEqualizer(View &view) const;
    void showSoundField(View &view) const;
    void showSystem(View &view) const;
    void showLight(View &view) const;
    void showStatus(View &view) const;

    void setVolume(int level, int endpoint);
    void setMute(bool muted);
    void moveMaster(int level);
    void followMaster();
    void followMonitoring();
    void usePreset();
    void sendGains();
    void recallCurve(int index);
    void saveCurve(int index, const std::u16string &name);
    void deleteCurve(int index);
    void showSoundField();
    void setAllLevels(int level);
    void stepLevels(int step);
    void setVoiceLevel(int level);
    void sendLight();
    void write(int type);

    bool presetChosen_ = false;
    int preset_ = 11;
    int fieldMaster_ = 0, fieldButton_ = 0, noiseShown_ = 0;
    int lightMode_ = 1, lightLevel_ = 50;
    std::array<int, 3> light_{255, 255, 255};
    bool lightPanelOn_ = true, firstRate_[2] = {};
    std::string lightLine_;
    Report battery_{};
    int page_ = 0, selected_ = -1;
    std::array<bool, 12> highlighted_{};
};
