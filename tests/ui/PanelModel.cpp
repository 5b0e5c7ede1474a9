#include "ui/PanelModel.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <QImage>

namespace {

constexpr char kSoundOn[] = "/left/png/y1.png";
constexpr char kSilent[] = "/right/png/silent-volumeHigh.png";

constexpr int8_t kPresets[12][10] = {{-2, 1, 4, 6, -2, 1, 3, 2, -3, -1}, {-6, -6, -6, 6, 0, 6, 0, -1, 0, -6},
                                     {-3, -3, 6, 4, 6, 2, 3, 2, 0, -5},  {-4, 1, -5, -5, -5, 4, 9, 7, -5, -6},
                                     {-2, -3, 1, 3, 1, 1, 1, 0, 0, -1},  {11, 8, 4, 5, -3, 3, 8, -5, 3, 6},
                                     {3, -3, -3, -5, 3, 3, 3, 5, 6, 4},  {1, 1, 2, 4, 1, 1, 0, 1, 0, -1},
                                     {6, 6, 3, -1, 0, 0, 1, 2, 1, 0},    {5, 6, 3, -2, -1, -1, 2, 4, 5, 3},
                                     {-3, -2, -1, 0, 2, 3, 2, 1, 0, 1},  {0, 0, 0, 0, 0, 0, 0, 0, 0, 0}};

// In the order of their bytes.
constexpr struct {
    const char *slider, *value, *marker;
    int angle; // of a 7.1 set around the listener, counter-clockwise from the right
} kSpeakers[8] = {{"page4_L", "L_V", "page4_Label_L", 120},    {"page4_R", "R_V", "page4_Label_R", 60},
                  {"page4_LS", "LS_V", "page4_Label_LS", 180}, {"page4_RS", "RS_V", "page4_Label_RS", 0},
                  {"page4_LB", "LB_V", "page4_Label_LB", 235}, {"page4_RB", "RB_V", "page4_Label_RB", 305},
                  {"page4_c", "C_V", "page4_Label_C", 90},     {"page4_w", "W_V", "page4_Label_W", 270}};

constexpr int kColours[7][3] = {{255, 0, 0},   {255, 255, 0}, {0, 255, 0},    {0, 255, 255},
                                {255, 0, 255}, {0, 0, 255},   {255, 255, 255}};
constexpr int kColourButtons[7] = {35, 36, 37, 38, 39, 40, 43};
const char *const kColourFields[3] = {"lineEdit", "lineEdit_2", "lineEdit_3"};

int percent(int level) {
    return std::clamp(level, 0, 100);
}

int speakerLevel(int level) {
    return std::clamp(level, -13, 4);
}

std::u16string nameOf(const EqCurve &curve) {
    char16_t name[32];
    std::memcpy(name, curve.name, sizeof name);
    return name;
}

} // namespace

PanelModel::PanelModel(const World &start)
    : world(start), sound(start.device.sound), extension(start.device.extension), curves(start.curveFile) {
    system.head = world.device.system;
    system.sound = sound;
    calls = {"init()", "getDeviceInfo(0)"};
    int speaker = sound.masterVolume, microphone = system.head.micLevel;
    for (const auto &[level, endpoint] : {std::pair{&speaker, 0}, {&microphone, 1}}) {
        if (*level >= 100) {
            setVolume(99, endpoint);
            *level = 100;
        }
        setVolume(*level, endpoint);
    }
    sound.masterVolume = static_cast<int8_t>(speaker);
    system.head.micLevel = microphone;
    write(1);
    write(2);
    calls.insert(calls.end(), {"_getVolum(0, 0)", "_getVolum(0, 0)"}); // the language, the volume page
    setMute(sound.masterVolume == 0);
    setVolume(system.head.micMuted ? 0 : system.head.micLevel, 1);
    if (system.head.monitoringOn)
        followMonitoring();
    calls.push_back("_exec_usb_encrypt(0, 0, 0, 0)");
    showSoundField();
    noiseShown_ = percent(system.head.noiseLevel);
}

void PanelModel::showSoundField() {
    fieldMaster_ = speakerLevel(sound.speakerLevel[0]);
    fieldButton_ = sound.fieldAngleMode <= 4 ? sound.fieldAngleMode : 0;
}

void PanelModel::end() {
    calls.push_back("_kill_task(normal.exe)");
    system.head.monitoringOn = 0;
    write(1);
    calls.push_back("releaseDeviceInfo()");
}

bool PanelModel::take(const std::string &control, int value, const std::u16string &curveName) {
    const size_t digits = control.find_last_not_of("0123456789") + 1;
    const Input input{control, control.substr(0, digits), std::atoi(control.c_str() + digits), value};
    return takeSwitch(input) || takeVolume(input) || takeEqualizer(input) || takeCurve(input, curveName) ||
           takeChoice(input) || takeSoundField(input) || takeMicrophone(input) || takeVoice(input) ||
           takeLight(input) || takeOther(input);
}

void PanelModel::write(int type) {
    calls.push_back("setDeviceProperty(" + std::to_string(type) + ")");
    if (type == 1)
        system.headCopy = system.head;
    if (type == 2)
        system.sound = sound;
    (type == 1   ? void(sentSystem = system)
     : type == 2 ? void(sentSound = sound)
                 : void(sentExtension = extension));
    if (world.imageFollows)
        world.device = {sentSystem.head, sentSound, {}, type == 3 ? extension : world.device.extension};
}

// ---- Switches and choices: a byte that a button flips or sets, and the block that goes out.

namespace {

struct Switch {
    const char *control;
    uint8_t SystemHead::*head;
    uint8_t SoundBlock::*sound;
    bool exclusive; // at most one of these is on once one was switched on
};
const Switch kSwitches[] = {{"pushButton_5", &SystemHead::micPageSwitch, nullptr, false},
                            {"pushButton_8", &SystemHead::voiceEffectOn, nullptr, false},
                            {"checkBox_6", &SystemHead::voiceEffectOn, nullptr, false},
                            {"checkBox_5", &SystemHead::echoOn, nullptr, false},
                            {"pushButton_29", &SystemHead::noiseReductionOn, nullptr, false},
                            {"pushButton_7", nullptr, &SoundBlock::pageSwitch, false},
                            {"pushButton_6", nullptr, &SoundBlock::equalizerOn, true},
                            {"pushButton_14", nullptr, &SoundBlock::soundFieldOn, true},
                            {"pushButton_28", nullptr, &SoundBlock::roomEffectOn, true},
                            {"pushButton_32", nullptr, &SoundBlock::virtualSurroundOn, true},
                            {"pushButton_33", nullptr, &SoundBlock::roomEffectOn, true}};

} // namespace

bool PanelModel::takeSwitch(const Input &input) {
    for (const Switch &row : kSwitches) {
        if (!input.is(row.control))
            continue;
        uint8_t &byte = row.head ? system.head.*row.head : sound.*row.sound;
        const uint8_t flipped = byte ^ 1;
        if (row.exclusive && flipped)
            sound.virtualSurroundOn = sound.soundFieldOn = sound.roomEffectOn = sound.equalizerOn = 0;
        byte = flipped;
        write(row.head ? 1 : 2);
        return true;
    }
    return false;
}

bool PanelModel::takeChoice(const Input &input) {
    const auto choice = static_cast<uint8_t>(input.is("comboBox_2") ? input.value + 1 : input.number);
    if (input.row == "btn_env" || input.is("comboBox_2")) {
        sound.position = choice;
        write(2);
    } else if (input.row == "btn_room" && sound.roomEffectOn && sound.room != choice) {
        sound.room = choice;
        write(2);
    } else if (input.row == "btn_mh" && system.head.voiceEffectOn) {
        system.head.voiceEffect = choice;
        write(1);
    }
    return input.is("comboBox_2") || input.row == "btn_env" || input.row == "btn_room" ||
           input.row == "btn_mh";
}

// ---- Volume

bool PanelModel::takeVolume(const Input &input) {
    const auto level = static_cast<int8_t>(input.value);
    if (input.is("verticalSlider_4", "horizontalSlider_16")) {
        moveMaster(level);
    } else if (input.is("verticalSlider_5", "verticalSlider_7")) {
        const bool left = input.number == 5;
        (left ? sound.leftVolume : sound.rightVolume) = level;
        if (world.locked)
            (left ? sound.rightVolume : sound.leftVolume) = level;
        sound.masterVolume = std::max(sound.leftVolume, sound.rightVolume);
        setVolume(sound.masterVolume, 0);
        write(2);
        followMaster();
    } else if (input.is("pushButton_12", "pushButton_13")) {
        setMute(!sound.muted);
        write(2);
    } else if (input.is("pushButton_4")) {
        world.locked = !world.locked;
    } else {
        return false;
    }
    return true;
}

// The louder channel is the master, the quieter one keeps its distance from the master sent last.
void PanelModel::moveMaster(int level) {
    const auto moved = static_cast<int8_t>(level - system.sound.masterVolume);
    const int left = sound.leftVolume, right = sound.rightVolume;
    sound.masterVolume = static_cast<int8_t>(level);
    sound.leftVolume = static_cast<int8_t>(left < right ? percent(left + moved) : level);
    sound.rightVolume = static_cast<int8_t>(right < left ? percent(right + moved) : level);
    setVolume(level, 0);
    write(2);
    followMaster();
}

void PanelModel::followMaster() {
    if ((sound.masterVolume == 0) == (sound.muted != 0))
        return;
    setMute(sound.masterVolume == 0);
    if (!sound.muted)
        setVolume(sound.masterVolume, 0);
}

void PanelModel::setVolume(int level, int endpoint) {
    calls.push_back("_SetVolum(" + std::to_string(level) + ", " + std::to_string(endpoint) + ", 0)");
}

void PanelModel::setMute(bool muted) {
    sound.muted = muted;
    calls.push_back(muted ? "_SetMasterMute(1, 0)" : "_SetMasterMute(0, 0)");
}

// ---- Equalizer

bool PanelModel::takeEqualizer(const Input &input) {
    if (input.row == "btn_jhq" && sound.equalizerOn) {
        presetChosen_ = true;
        preset_ = input.number;
        usePreset();
    } else if (input.is("pushButton_26") && sound.equalizerOn) {
        usePreset();
    } else if (input.row == "verticalSlider_" && input.number >= 10) { // whether it is on or not
        extension.gain[input.number - 10] = static_cast<int8_t>(input.value - 20);
        sendGains();
    } else {
        return input.row == "btn_jhq" || input.is("pushButton_26");
    }
    return true;
}

void PanelModel::usePreset() {
    std::memcpy(extension.gain, kPresets[preset_], sizeof extension.gain);
    sendGains();
}

// The device's own idea of the sound comes back with every write of the gains and is shown where it is
// another.
void PanelModel::sendGains() {
    write(3);
    if (std::memcmp(&sound, &world.device.sound, sizeof sound) != 0) {
        sound = world.device.sound;
        showSoundField();
    }
}

bool PanelModel::takeCurve(const Input &input, const std::u16string &name) {
    if (!input.is("comboBox", "pushButton_24", "pushButton_25"))
        return false;
    int index = 0;
    while (index < curves.count && nameOf(curves.curve[index]) != name)
        ++index;
    if (!sound.equalizerOn)
        return true;
    if (input.is("comboBox"))
        recallCurve(index);
    else if (input.is("pushButton_25"))
        saveCurve(index, name);
    else
        deleteCurve(index);
    return true;
}

// Each slider that moves sends its band.
void PanelModel::recallCurve(int index) {
    if (index == curves.count) {
        box = "not found";
        return;
    }
    curves.current = index;
    const ExtBlock before = extension;
    std::memcpy(extension.gain, curves.curve[index].gain, sizeof extension.gain);
    for (int band = 0; band < 10; ++band) {
        if (std::clamp<int>(before.gain[band], -20, 20) != extension.gain[band])
            sendGains();
    }
}

void PanelModel::saveCurve(int index, const std::u16string &name) {
    if (index == 10) {
        box = "too many EQ info to save";
        return;
    }
    EqCurve &curve = curves.curve[curves.current = index];
    curve = {};
    std::memcpy(curve.name, name.data(), name.size() * sizeof(char16_t));
    std::memcpy(curve.gain, extension.gain, sizeof curve.gain);
    world.curveFile = curves; // before a new one is counted
    curves.count = std::max(curves.count, index + 1);
}

void PanelModel::deleteCurve(int index) {
    if (index < curves.count) {
        std::copy(curves.curve + index + 1, curves.curve + 10, curves.curve + index);
        curves.curve[9] = {};
        curves.count -= 1;
        if (curves.current >= curves.count)
            curves.current = std::max(curves.current - 1, 0);
    }
    world.curveFile = curves;
}

// ---- Sound field

bool PanelModel::takeSoundField(const Input &input) {
    for (size_t i = 0; i < 8; ++i) { // the only controls that the switch does not gate
        if (input.is(kSpeakers[i].slider)) {
            sound.speakerLevel[i] = static_cast<int8_t>(input.value);
            write(2);
            return true;
        }
    }
    const bool isMaster = input.is("horizontalSlider_14");
    if (isMaster)
        fieldMaster_ = input.value;
    if (!isMaster && (input.row != "Page4_P_" || input.number > 7))
        return false;
    if (!sound.soundFieldOn)
        return true;
    if (isMaster)
        setAllLevels(input.value);
    else if (input.number > 5)
        stepLevels(input.number == 6 ? -1 : 1);
    else
        fieldButton_ = input.number;
    if (input.number == 5)
        setAllLevels(0);
    if (input.row == "Page4_P_" && input.number <= 5)
        sound.fieldAngleMode = static_cast<uint8_t>(std::min(input.number, 4));
    write(2);
    return true;
}

void PanelModel::setAllLevels(int level) {
    fieldMaster_ = level;
    for (int8_t &each : sound.speakerLevel)
        each = static_cast<int8_t>(level);
}

void PanelModel::stepLevels(int step) {
    for (int8_t &level : sound.speakerLevel)
        level = static_cast<int8_t>(step < 0 ? std::max(level - 1, -13) : std::min(level + 1, 4));
    fieldMaster_ = speakerLevel(sound.speakerLevel[0]);
}

int PanelModel::turning() const {
    const int mode = sound.soundFieldOn ? sound.fieldAngleMode : 0;
    return mode == 1 ? -1 : mode == 2 ? 1 : 0;
}

// ---- Microphone, voices, noise reduction

bool PanelModel::takeMicrophone(const Input &input) {
    SystemHead &head = system.head;
    if (input.is("verticalSlider")) {
        head.micLevel = input.value;
        head.micMuted = input.value == 0;
        setVolume(input.value, 1);
    } else if (input.is("pushButton_15")) {
        head.micMuted ^= 1;
        setVolume(head.micMuted ? 0 : head.micLevel, 1);
    } else if (input.is("verticalSlider_2")) {
        head.monitorLevel = input.value;
        head.monitoringOn = input.value != 0;
        followMonitoring();
    } else if (input.is("pushButton_16", "btn_uninstall_mic")) {
        head.monitoringOn ^= 1;
        followMonitoring();
    } else if (input.is("horizontalSlider_17")) {
        noiseShown_ = input.value;
        if (!head.noiseReductionOn)
            return true;
        head.noiseLevel = input.value;
    } else if (input.is("pushButton_31")) { // goes out with the next write
        head.noiseLevel = noiseShown_ = 50;
        return true;
    } else {
        return false;
    }
    write(1);
    return true;
}

void PanelModel::followMonitoring() {
    calls.push_back(system.head.monitoringOn ? "_is_task_running(normal.exe)" : "_kill_task(normal.exe)");
    if (system.head.monitoringOn && !world.taskRuns)
        calls.push_back("_start_task(normal.exe, \"\", 0, null)");
}

bool PanelModel::takeVoice(const Input &input) {
    SystemHead &head = system.head;
    const int level = percent(head.effectLevel);
    if (input.is("horizontalSlider_15"))
        setVoiceLevel(input.value);
    if (input.is("Page4_P_8", "Page4_P_9"))
        setVoiceLevel(percent(input.is("Page4_P_8") ? level - 1 : level + 1));
    if (input.is("pushButton_30"))
        setVoiceLevel(50);
    return input.row == "btn_mh" ||
           input.is("horizontalSlider_15", "Page4_P_8", "Page4_P_9", "pushButton_30");
}

void PanelModel::setVoiceLevel(int level) {
    if (level == percent(system.head.effectLevel)) // the slider does not move
        return;
    system.head.effectLevel = static_cast<uint8_t>(level);
    write(1);
}

// ---- Light and the rest

bool PanelModel::takeLight(const Input &input) {
    bool sends = input.is("pushButton_9", "pushButton_palette");
    for (size_t i = 0; i < 7; ++i) {
        if (input.row == "pushButton_" && input.number == kColourButtons[i]) {
            std::copy_n(kColours[i], 3, light_.begin());
            sends = true;
        }
    }
    for (size_t i = 0; i < 3; ++i) {
        if (input.is(kColourFields[i])) {
            light_[i] = kColourTexts[input.value].number;
            sends = true;
        }
    }
    if (input.is("pushButton_palette")) { // x + 256 y
        const QRgb pixel = QImage(":/page4/png/pallete.png").pixel(input.value % 256, input.value / 256);
        light_ = {qRed(pixel), qGreen(pixel), qBlue(pixel)};
    }
    if (input.is("comboBox_3"))
        lightMode_ = input.value;
    if (input.is("horizontalSlider_18"))
        lightLevel_ = input.value;
    if (input.is("pushButton_34"))
        lightPanelOn_ = !lightPanelOn_;
    if (sends)
        sendLight();
    return sends || input.is("comboBox_3", "horizontalSlider_18", "pushButton_34");
}

void PanelModel::sendLight() {
    const int fields[] = {lightMode_, lightLevel_, light_[0], light_[1], light_[2]};
    Report report{0x0A};
    lightLine_.clear();
    for (size_t i = 0; i < 5; ++i) {
        report[i + 1] = static_cast<uint8_t>(fields[i]);
        lightLine_ += (i ? "," : "") + std::to_string(fields[i]);
    }
    reports.push_back(report);
}

bool PanelModel::takeOther(const Input &input) {
    if (input.row == "radioButton" || input.row == "radioButton_") {
        firstRate_[input.number > 2] = input.number == 0 || input.number == 3;
    } else if (input.is("battery")) { // bytes 1 to 3 of the reply; above them: it is refused
        for (int i = 0; i < 3 && input.value >> 24 == 0; ++i)
            battery_[static_cast<size_t>(i + 1)] = static_cast<uint8_t>(input.value >> 8 * i);
    } else if (input.is("language")) { // everything is shown as before
        calls.push_back("_getVolum(0, 0)");
    } else if (input.is("dialogs")) { // opened and closed
    } else if (input.row == "bt_y") {
        highlighted_[static_cast<size_t>(input.number)] = true;
        if (selected_ >= 0) // also where it is the same one, which so loses its highlight
            highlighted_[static_cast<size_t>(selected_)] = false;
        selected_ = page_ = input.number;
    } else {
        return false;
    }
    return true;
}

// ---- What is shown

class PanelModel::View {
public:
    void put(const std::string &control, const char *property, const std::string &value) {
        lines[control + "." + property] = value;
    }
    void value(const std::string &control, int number) { put(control, "value", std::to_string(number)); }
    void text(const std::string &control, int number) { put(control, "text", std::to_string(number)); }
    void flag(const std::string &control, const char *property, bool on) {
        put(control, property, on ? "true" : "false");
    }
    void style(const std::string &control, const std::string &part) { put(control, "styleSheet", part); }
    void mark(const std::string &control, bool on) {
        style(control, on ? "border: 1px solid #ef0303;" : "border: none;");
    }
    void switchButton(const std::string &control, bool on) {
        flag(control, "checked", on);
        if (control.rfind("checkBox", 0) != 0)
            style(control, on ? "btn_open.png" : "btn_close.png");
    }
    void enabled(std::initializer_list<const char *> controls, bool on) {
        for (const char *control : controls)
            flag(control, "enabled", on);
    }
    void lit(std::initializer_list<const char *> labels, bool on) {
        for (const char *label : labels)
            flag(label, "lit", on);
    }

    std::map<std::string, std::string> lines;
};

std::map<std::string, std::string> PanelModel::shown() const {
    View view;
    for (const Switch &row : kSwitches)
        view.switchButton(row.control, (row.head ? system.head.*row.head : sound.*row.sound) != 0);
    showSound(view);
    showEqualizer(view);
    showSoundField(view);
    showSystem(view);
    showLight(view);
    showStatus(view);
    return view.lines;
}

void PanelModel::showSound(View &view) const {
    const int master = sound.masterVolume;
    view.text("label_56", master);
    view.text("label_57", sound.leftVolume);
    view.text("label_59", sound.rightVolume);
    view.value("verticalSlider_4", percent(master));
    view.value("horizontalSlider_16", percent(master));
    view.value("verticalSlider_5", percent(sound.leftVolume));
    view.value("verticalSlider_7", percent(sound.rightVolume));
    for (const char *button : {"pushButton_12", "pushButton_13"})
        view.style(button, sound.muted ? kSilent : kSoundOn);
    view.style("pushButton_4", world.locked ? "icon_lock.png" : "icon_lock_open.png");
    view.enabled({"btn_room1", "btn_room2", "btn_room3"}, sound.roomEffectOn);
    const auto caption = [&](const char *label, bool on) {
        view.style(label, on ? "color: #FFFFFF;" : "color: #444645;");
    };
    caption("label_148", sound.virtualSurroundOn);
    caption("label_150", sound.roomEffectOn);
    caption("label_152", sound.soundFieldOn);
    for (int i = 1; i <= 3; ++i)
        view.mark("btn_room" + std::to_string(i), sound.room == i);
    for (int i = 1; i <= 4; ++i)
        view.mark("btn_env" + std::to_string(i), sound.position == i);
    if (sound.position >= 1 && sound.position <= 4)
        view.put("comboBox_2", "currentIndex", std::to_string(sound.position - 1));
}

void PanelModel::showEqualizer(View &view) const {
    view.enabled({"widget_21", "widget_24"}, sound.equalizerOn);
    for (int i = 0; i < 12; ++i)
        view.style("btn_jhq" + std::to_string(i), presetChosen_ && preset_ == i
                                                      ? "background: rgba(110,110,110,1)"
                                                      : "background: rgba(0,0,0,1)");
    for (int band = 0; band < 10; ++band) {
        const int gain = extension.gain[band];
        view.value("verticalSlider_" + std::to_string(10 + band), std::clamp(gain + 20, 0, 40));
        view.put("jhq_lab_" + std::to_string(10 + band), "text",
                 (gain > 0 ? "+" : "") + std::to_string(gain));
    }
    std::u16string names;
    for (int i = 0; i < curves.count; ++i)
        names += nameOf(curves.curve[i]) + u'|';
    view.put("comboBox", "items", asText(names).toStdString());
}

void PanelModel::showSoundField(View &view) const {
    view.enabled({"Page4_P", "frame_2"}, sound.soundFieldOn);
    view.value("horizontalSlider_14", fieldMaster_);
    for (int i = 1; i <= 5; ++i)
        view.style("Page4_P_" + std::to_string(i),
                   fieldButton_ == i ? "background: rgba(110,110,110,1)" : "background: rgba(26,26,26,1)");
    for (size_t i = 0; i < 8; ++i) {
        const int level = speakerLevel(sound.speakerLevel[i]);
        view.value(kSpeakers[i].slider, level);
        view.put(kSpeakers[i].value, "text", std::to_string(level) + "db");
        // From one and a half times the distance of its reference point (104 pixels) down to the centre.
        const double radians = kSpeakers[i].angle * 3.14159265358979 / 180;
        const auto fromCentre = [&](double along) {
            const double whole = std::floor(-1.5 * std::round(104 * along) + 0.5);
            return std::to_string(static_cast<int>(std::floor(whole * (level + 13) / 17 + 0.5) - whole));
        };
        view.put(kSpeakers[i].marker, "fromCentre",
                 fromCentre(std::cos(radians)) + "," + fromCentre(-std::sin(radians)));
    }
}

void PanelModel::showSystem(View &view) const {
    const SystemHead &head = system.head;
    view.value("verticalSlider", percent(head.micLevel));
    view.value("verticalSlider_2", percent(head.monitorLevel));
    view.text("label_15", head.micLevel);
    view.text("label_16", head.monitorLevel);
    view.style("pushButton_15", head.micMuted ? kSilent : kSoundOn);
    view.style("pushButton_16", head.monitoringOn ? kSoundOn : kSilent);
    view.enabled({"widget_41", "checkBox_5", "widget_46"}, head.voiceEffectOn);
    view.value("horizontalSlider_15", percent(head.effectLevel));
    for (int i = 1; i <= 4; ++i)
        view.mark("btn_mh" + std::to_string(i), head.voiceEffect == i);

    view.style("label_208", head.noiseReductionOn ? "jiangzao_pic.png" : "jiangzao_pic_nor.png");
    view.enabled({"widget_50"}, head.noiseReductionOn);
    view.value("horizontalSlider_17", noiseShown_);
}

void PanelModel::showLight(View &view) const {
    for (size_t i = 0; i < 3; ++i)
        view.text(kColourFields[i], light_[i]);
    view.put("lineEdit_5", "text", lightLine_);
    view.style("label_color_pat_2", "background-color: rgb(" + std::to_string(light_[0]) + ", " +
                                        std::to_string(light_[1]) + ", " + std::to_string(light_[2]) + ");");
    view.switchButton("pushButton_34", lightPanelOn_);
    view.enabled({"comboBox_3", "pushButton_9", "lineEdit"}, lightPanelOn_);
}

void PanelModel::showStatus(View &view) const {
    const bool connected = battery_[1] != 0, charging = connected && battery_[2] == 1;
    const std::string percentage = std::to_string(std::min((battery_[3] + 1) * 10, 100));
    const bool full = percentage == "90" || percentage == "100";
    const std::string level = full ? "bp_100" : "bp_" + percentage;
    view.style("label_227", connected ? "url(:/page4/png/usb_cnt.png)" : "url(:/page4/png/usb_dis.png)");
    view.style("label_228", "url(:/page4/png/" +
                                (charging    ? "chging"
                                 : connected ? level
                                             : "bp_none") +
                                ".png)");
    view.put("label_240", "text", connected && !charging ? percentage + "%" : "");

    view.lit({"label_138", "label_149"}, !sound.muted);
    view.lit({"label_151", "label_154"}, sound.equalizerOn);
    view.lit({"label_158"}, sound.soundFieldOn);
    view.lit({"label_139", "label_147"}, !system.head.micMuted);
    view.lit({"label_156", "label_153"}, system.head.voiceEffectOn);
    view.lit({"label_159", "label_155"}, system.head.noiseReductionOn);

    view.style("widget_6", firstRate_[0] ? "44.1KHz.png" : "48KHz.png");
    view.style("widget_17", firstRate_[1] ? "16KHz.png" : "48KHz.png");
    view.put("stackedWidget", "currentIndex", std::to_string(page_));
    for (int i = 0; i < 12; ++i) {
        const std::string button = "bt_y" + std::to_string(i);
        view.style(button, highlighted_[static_cast<size_t>(i)]
                               ? "background-color: rgba(110, 110, 110, 0.9);"
                               : "background-color: none;");
        view.flag(button, "isHidden", i == 1 || i == 5 || i == 7 || i == 10);
    }
}
