// The panel's pages once more, as small as can be: what each input does to the settings, which calls it
// makes and what is stored. Inputs are named by their controls.
#pragma once

#include "window/session/PanelTables.h"

#include <algorithm>
#include <cstring>
#include <QImage>
#include <vector>

struct PanelModel {
    using Report = std::array<uint8_t, 64>;

    PanelWorld world; // as the inputs left it
    SystemBlock system{}, sentSystem{};
    SoundBlock sound = world.device.sound, sentSound{};
    ExtBlock extension = world.device.extension, sentExtension{};
    EqCurveStore curves = world.curveFile;

    // The effects of the start or of the last inputs.
    std::vector<std::string> calls{"init()", "getDeviceInfo(0)"};
    std::vector<Report> reports;
    std::string box; // text of the message box, if one came

    bool presetChosen = false;
    int preset = 11;
    int fieldMaster = 0, fieldButton = 0, noiseShown = 0;
    int lightMode = 1, lightLevel = 50;
    std::array<int, 3> light{255, 255, 255};
    bool lightPanelOn = true, firstRate[2] = {};
    std::string lightLine;
    Report battery{};
    int page = 0, selected = -1;
    std::array<bool, 12> highlighted{};

    // A start of the panel.
    explicit PanelModel(const PanelWorld &start) : world(start) {
        system.head = world.device.system;
        system.sound = sound;
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
        noiseShown = percent(system.head.noiseLevel);
    }

    void end() {
        calls.push_back("_kill_task(normal.exe)");
        system.head.monitoringOn = 0;
        write(1);
        calls.push_back("releaseDeviceInfo()");
    }

    // False: not a control of the pages. curveName: what stands in the curves' box.
    bool take(const std::string &control, int value, const std::u16string &curveName) {
        const size_t digits = control.find_last_not_of("0123456789") + 1;
        const PanelInput input{control, control.substr(0, digits), std::atoi(control.c_str() + digits),
                               value};
        return takeByte(input) || takeVolume(input) || takeEqualizer(input) || takeCurve(input, curveName) ||
               takeSoundField(input) || takeMicrophone(input) || takeVoice(input) || takeLight(input) ||
               takeOther(input);
    }

    uint8_t &at(int byte) {
        return byte < 32 ? reinterpret_cast<uint8_t *>(&system.head)[byte]
                         : reinterpret_cast<uint8_t *>(&sound)[byte - 32];
    }

    void write(int type) {
        calls.push_back("setDeviceProperty(" + std::to_string(type) + ")");
        if (type == 1) {
            system.headCopy = system.head;
            sentSystem = system;
        } else if (type == 2) {
            sentSound = system.sound = sound;
        } else {
            sentExtension = extension;
        }
        if (world.imageFollows)
            world.device = {sentSystem.head, sentSound, {}, type == 3 ? extension : world.device.extension};
    }

    bool takeByte(const PanelInput &input) {
        const auto *row =
            std::find_if(std::begin(kByteControls), std::end(kByteControls), [&](const ByteControl &each) {
                return input.control == each.name || input.row == each.name;
            });
        if (row == std::end(kByteControls))
            return false;
        const int bytes[] = {at(row->byte) ^ 1, input.number, input.value + 1, input.value};
        const auto byte = static_cast<uint8_t>(bytes[row->kind]);
        if ((row->gate && !at(row->gate)) || (row->byte == kRoom && byte == sound.room))
            return true;
        const auto exclusive = {kSurroundOn, kFieldOn, kRoomOn, kEqualizerOn};
        if (byte && std::count(exclusive.begin(), exclusive.end(), row->byte)) {
            for (const int other : exclusive)
                at(other) = 0;
        }
        at(row->byte) = byte;
        write(row->byte < 32 ? 1 : 2);
        return true;
    }

    // ---- Volume

    bool takeVolume(const PanelInput &input) {
        const auto level = static_cast<int8_t>(input.value);
        if (input.is("verticalSlider_4", "horizontalSlider_16")) {
            // The quieter channel keeps its distance from the master sent last.
            const int moved = static_cast<int8_t>(level - system.sound.masterVolume);
            const int left = sound.leftVolume, right = sound.rightVolume;
            sound.leftVolume = static_cast<int8_t>(left < right ? percent(left + moved) : level);
            sound.rightVolume = static_cast<int8_t>(right < left ? percent(right + moved) : level);
            sendMaster(level);
        } else if (input.is("verticalSlider_5", "verticalSlider_7")) {
            if (world.locked || input.number == 5)
                sound.leftVolume = level;
            if (world.locked || input.number == 7)
                sound.rightVolume = level;
            sendMaster(std::max(sound.leftVolume, sound.rightVolume));
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

    void sendMaster(int8_t level) {
        sound.masterVolume = level;
        setVolume(level, 0);
        write(2);
        if ((level == 0) == (sound.muted != 0))
            return;
        setMute(level == 0);
        if (!sound.muted)
            setVolume(level, 0);
    }

    void setVolume(int level, int endpoint) {
        calls.push_back("_SetVolum(" + std::to_string(level) + ", " + std::to_string(endpoint) + ", 0)");
    }

    void setMute(bool muted) {
        sound.muted = muted;
        calls.push_back(muted ? "_SetMasterMute(1, 0)" : "_SetMasterMute(0, 0)");
    }

    // ---- Equalizer

    bool takeEqualizer(const PanelInput &input) {
        const bool isPreset = input.row == "btn_jhq";
        if (input.row == "verticalSlider_" && input.number >= 10) { // whether it is on or not
            extension.gain[input.number - 10] = static_cast<int8_t>(input.value - 20);
            sendGains();
            return true;
        }
        if ((isPreset || input.is("pushButton_26")) && sound.equalizerOn) {
            presetChosen |= isPreset;
            preset = isPreset ? input.number : preset;
            std::memcpy(extension.gain, kPresets[preset], sizeof extension.gain);
            sendGains();
        }
        return isPreset || input.is("pushButton_26");
    }

    // The device's own idea of the sound comes back with every write of the gains and is shown where it is
    // another.
    void sendGains() {
        write(3);
        if (std::memcmp(&sound, &world.device.sound, sizeof sound) != 0) {
            sound = world.device.sound;
            showSoundField();
        }
    }

    bool takeCurve(const PanelInput &input, const std::u16string &name) {
        if (!input.is("comboBox", "pushButton_24", "pushButton_25"))
            return false;
        int index = 0;
        while (index < curves.count && curves.curve[index].name != name)
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
    void recallCurve(int index) {
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

    void saveCurve(int index, const std::u16string &name) {
        if (index == 10) {
            box = "too many EQ info to save";
            return;
        }
        EqCurve &curve = curves.curve[curves.current = index];
        curve = {};
        name.copy(curve.name, name.size());
        std::memcpy(curve.gain, extension.gain, sizeof curve.gain);
        world.curveFile = curves; // before a new one is counted
        curves.count = std::max(curves.count, index + 1);
    }

    void deleteCurve(int index) {
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

    bool takeSoundField(const PanelInput &input) {
        const bool isMaster = input.is("horizontalSlider_14");
        if (!isMaster && (input.row != "Page4_P_" || input.number > 7))
            return false;
        if (isMaster)
            fieldMaster = input.value;
        if (!sound.soundFieldOn)
            return true;
        if (isMaster || input.number == 5) {
            fieldMaster = isMaster ? input.value : 0;
            std::fill_n(sound.speakerLevel, 8, static_cast<int8_t>(fieldMaster));
        }
        if (input.number <= 5) {
            fieldButton = input.number;
            sound.fieldAngleMode = static_cast<uint8_t>(std::min(input.number, 4));
        } else if (!isMaster) {
            for (int8_t &level : sound.speakerLevel)
                level = static_cast<int8_t>(input.number == 6 ? std::max(level - 1, -13)
                                                              : std::min(level + 1, 4));
            fieldMaster = speakerLevel(sound.speakerLevel[0]);
        }
        write(2);
        return true;
    }

    void showSoundField() {
        fieldMaster = speakerLevel(sound.speakerLevel[0]);
        fieldButton = sound.fieldAngleMode <= 4 ? sound.fieldAngleMode : 0;
    }

    // Degrees a tick of the sound field's clock.
    int turning() const {
        const int mode = sound.soundFieldOn ? sound.fieldAngleMode : 0;
        return mode == 1 ? -1 : mode == 2 ? 1 : 0;
    }

    // ---- Microphone, voices, noise reduction

    bool takeMicrophone(const PanelInput &input) {
        SystemHead &head = system.head;
        if (input.is("verticalSlider", "pushButton_15")) {
            const bool slides = input.is("verticalSlider");
            head.micLevel = slides ? input.value : head.micLevel;
            head.micMuted = slides ? input.value == 0 : head.micMuted ^ 1;
            setVolume(head.micMuted ? 0 : head.micLevel, 1);
        } else if (input.is("verticalSlider_2", "pushButton_16", "btn_uninstall_mic")) {
            const bool slides = input.is("verticalSlider_2");
            head.monitorLevel = slides ? input.value : head.monitorLevel;
            head.monitoringOn = slides ? input.value != 0 : head.monitoringOn ^ 1;
            followMonitoring();
        } else if (input.is("horizontalSlider_17", "pushButton_31")) {
            const bool slides = input.is("horizontalSlider_17");
            noiseShown = slides ? input.value : 50;
            if (!slides || head.noiseReductionOn)
                head.noiseLevel = noiseShown;
            if (!slides || !head.noiseReductionOn) // the button's level goes out with the next write
                return true;
        } else {
            return false;
        }
        write(1);
        return true;
    }

    void followMonitoring() {
        calls.push_back(system.head.monitoringOn ? "_is_task_running(normal.exe)" : "_kill_task(normal.exe)");
        if (system.head.monitoringOn && !world.taskRuns)
            calls.push_back("_start_task(normal.exe, \"\", 0, null)");
    }

    bool takeVoice(const PanelInput &input) {
        const int level = percent(system.head.effectLevel);
        const std::map<std::string, int> levels{{"horizontalSlider_15", input.value},
                                                {"Page4_P_8", level - 1},
                                                {"Page4_P_9", level + 1},
                                                {"pushButton_30", 50}};
        const auto found = levels.find(input.control);
        if (found != levels.end() && percent(found->second) != level) { // else the slider does not move
            system.head.effectLevel = static_cast<uint8_t>(percent(found->second));
            write(1);
        }
        return found != levels.end();
    }

    // ---- Light and the rest

    bool takeLight(const PanelInput &input) {
        const auto *field = std::find(kColourFields, kColourFields + 3, input.control);
        if (input.is("comboBox_3")) {
            lightMode = input.value;
        } else if (input.is("horizontalSlider_18")) {
            lightLevel = input.value;
        } else if (input.is("pushButton_34")) {
            lightPanelOn = !lightPanelOn;
        } else if (input.is("pushButton_9")) {
            sendLight();
        } else if (input.is("pushButton_palette")) { // x + 256 y
            const QRgb pixel = QImage(":/page4/png/pallete.png").pixel(input.value % 256, input.value / 256);
            light = {qRed(pixel), qGreen(pixel), qBlue(pixel)};
            sendLight();
        } else if (kColours.count(input.control)) {
            light = kColours.at(input.control);
            sendLight();
        } else if (field != kColourFields + 3) {
            light[static_cast<size_t>(field - kColourFields)] = kColourTexts[input.value].number;
            sendLight();
        } else {
            return false;
        }
        return true;
    }

    void sendLight() {
        const int fields[] = {lightMode, lightLevel, light[0], light[1], light[2]};
        Report report{0x0A};
        lightLine.clear();
        for (size_t i = 0; i < 5; ++i) {
            report[i + 1] = static_cast<uint8_t>(fields[i]);
            lightLine += (i ? "," : "") + std::to_string(fields[i]);
        }
        reports.push_back(report);
    }

    bool takeOther(const PanelInput &input) {
        if (input.row == "radioButton" || input.row == "radioButton_") {
            firstRate[input.number > 2] = input.number == 0 || input.number == 3;
        } else if (input.is("battery")) { // bytes 1 to 3 of the reply; above them: it is refused
            for (int i = 0; i < 3 && input.value >> 24 == 0; ++i)
                battery[static_cast<size_t>(i + 1)] = static_cast<uint8_t>(input.value >> 8 * i);
        } else if (input.is("language")) { // everything is shown as before
            calls.push_back("_getVolum(0, 0)");
        } else if (input.row == "bt_y") {
            highlighted[static_cast<size_t>(input.number)] = true;
            if (selected >= 0) // also where it is the same one, which so loses its highlight
                highlighted[static_cast<size_t>(selected)] = false;
            selected = page = input.number;
        } else {
            return input.is("dialogs"); // opened and closed
        }
        return true;
    }
};
