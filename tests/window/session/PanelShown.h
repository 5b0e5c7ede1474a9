// What the panel shows in a state of its model.
#pragma once

#include "window/session/PanelModel.h"

#include <cmath>
#include <QString>

// QString::fromStdU16String would take a leading U+FEFF for a byte order mark.
inline QString asText(const std::u16string &units) {
    return QString(reinterpret_cast<const QChar *>(units.data()), static_cast<int>(units.size()));
}

// "control.property": its value, or for styleSheet a part of it.
class PanelShown {
public:
    explicit PanelShown(PanelModel model) : model_(std::move(model)) {
        showBytes();
        showLevels();
        showEqualizer();
        showSpeakers();
        showLight();
        showBattery();
        showPages();
    }

    std::map<std::string, std::string> lines;

private:
    // The places that show whether a byte is set.
    void showBytes() {
        constexpr char soundOn[] = "/left/png/y1.png", silent[] = "/right/png/silent-volumeHigh.png";
        constexpr char bright[] = "color: #FFFFFF;", dim[] = "color: #444645;";
        const struct {
            int byte;
            const char *on, *off;
            std::vector<const char *> places;
        } rows[] = {
            {kMuted, silent, soundOn, {"pushButton_12.styleSheet", "pushButton_13.styleSheet"}},
            {kMuted, "false", "true", {"label_138.lit", "label_149.lit"}},
            {kMicMuted, silent, soundOn, {"pushButton_15.styleSheet"}},
            {kMicMuted, "false", "true", {"label_139.lit", "label_147.lit"}},
            {kMonitoringOn, soundOn, silent, {"pushButton_16.styleSheet"}},
            {kSurroundOn, bright, dim, {"label_148.styleSheet"}},
            {kRoomOn, bright, dim, {"label_150.styleSheet"}},
            {kRoomOn, "true", "false", {"btn_room1.enabled", "btn_room2.enabled", "btn_room3.enabled"}},
            {kFieldOn, bright, dim, {"label_152.styleSheet"}},
            {kFieldOn, "true", "false", {"Page4_P.enabled", "frame_2.enabled", "label_158.lit"}},
            {kEqualizerOn, "true", "false", {"widget_21.enabled", "widget_24.enabled"}},
            {kEqualizerOn, "true", "false", {"label_151.lit", "label_154.lit"}},
            {kVoiceOn, "true", "false", {"widget_41.enabled", "checkBox_5.enabled", "widget_46.enabled"}},
            {kVoiceOn, "true", "false", {"label_156.lit", "label_153.lit"}},
            {kNoiseOn, "jiangzao_pic.png", "jiangzao_pic_nor.png", {"label_208.styleSheet"}},
            {kNoiseOn, "true", "false", {"widget_50.enabled", "label_159.lit", "label_155.lit"}},
        };
        for (const auto &row : rows) {
            for (const char *place : row.places)
                lines[place] = model_.at(row.byte) ? row.on : row.off;
        }
        for (const ByteControl &control : kByteControls) {
            if (control.kind == ByteControl::Flip)
                showSwitch(control.name, model_.at(control.byte) != 0);
            for (int i = 1; control.kind == ByteControl::Number && i <= (control.byte == kRoom ? 3 : 4); ++i)
                lines[control.name + std::to_string(i) + ".styleSheet"] =
                    model_.at(control.byte) == i ? "border: 1px solid #ef0303;" : "border: none;";
        }
    }

    void showSwitch(const std::string &control, bool on) {
        lines[control + ".checked"] = on ? "true" : "false";
        if (control.rfind("checkBox", 0) != 0)
            lines[control + ".styleSheet"] = on ? "btn_open.png" : "btn_close.png";
    }

    void showLevels() {
        const SystemHead &head = model_.system.head;
        const SoundBlock &sound = model_.sound;
        const std::map<const char *, int> levels{{"label_56.text", sound.masterVolume},
                                                 {"label_57.text", sound.leftVolume},
                                                 {"label_59.text", sound.rightVolume},
                                                 {"verticalSlider_4.value", percent(sound.masterVolume)},
                                                 {"horizontalSlider_16.value", percent(sound.masterVolume)},
                                                 {"verticalSlider_5.value", percent(sound.leftVolume)},
                                                 {"verticalSlider_7.value", percent(sound.rightVolume)},
                                                 {"label_15.text", head.micLevel},
                                                 {"label_16.text", head.monitorLevel},
                                                 {"verticalSlider.value", percent(head.micLevel)},
                                                 {"verticalSlider_2.value", percent(head.monitorLevel)},
                                                 {"horizontalSlider_14.value", model_.fieldMaster},
                                                 {"horizontalSlider_15.value", percent(head.effectLevel)},
                                                 {"horizontalSlider_17.value", model_.noiseShown}};
        for (const auto &[place, level] : levels)
            lines[place] = std::to_string(level);
        if (sound.position >= 1 && sound.position <= 4)
            lines["comboBox_2.currentIndex"] = std::to_string(sound.position - 1);
        lines["pushButton_4.styleSheet"] = model_.world.locked ? "icon_lock.png" : "icon_lock_open.png";
    }

    void showEqualizer() {
        for (int i = 0; i < 12; ++i)
            lines["btn_jhq" + std::to_string(i) + ".styleSheet"] = model_.presetChosen && model_.preset == i
                                                                       ? "background: rgba(110,110,110,1)"
                                                                       : "background: rgba(0,0,0,1)";
        for (int band = 0; band < 10; ++band) {
            const int gain = model_.extension.gain[band];
            const std::string number = std::to_string(10 + band);
            lines["verticalSlider_" + number + ".value"] = std::to_string(std::clamp(gain + 20, 0, 40));
            lines["jhq_lab_" + number + ".text"] = (gain > 0 ? "+" : "") + std::to_string(gain);
        }
        QString names;
        for (int i = 0; i < model_.curves.count; ++i)
            names += asText(model_.curves.curve[i].name) + "|";
        lines["comboBox.items"] = names.toStdString();
    }

    void showSpeakers() {
        for (int i = 1; i <= 5; ++i)
            lines["Page4_P_" + std::to_string(i) + ".styleSheet"] =
                model_.fieldButton == i ? "background: rgba(110,110,110,1)" : "background: rgba(26,26,26,1)";
        // In the order of their bytes. Angles of a 7.1 set around the listener, counter-clockwise from the
        // right.
        const std::pair<std::string, int> speakers[] = {{"L", 120},  {"R", 60},   {"LS", 180}, {"RS", 0},
                                                        {"LB", 235}, {"RB", 305}, {"C", 90},   {"W", 270}};
        const int8_t *byte = model_.sound.speakerLevel;
        for (const auto &[name, angle] : speakers) {
            const int level = speakerLevel(*byte++);
            const std::string slider = name == "C" ? "c" : name == "W" ? "w" : name;
            lines["page4_" + slider + ".value"] = std::to_string(level);
            lines[name + "_V.text"] = std::to_string(level) + "db";
            // From one and a half times the distance of its reference point (104 pixels) down to the centre.
            const auto fromCentre = [level = level](double along) {
                const double whole = std::floor(-1.5 * std::round(104 * along) + 0.5);
                return std::to_string(static_cast<int>(std::floor(whole * (level + 13) / 17 + 0.5) - whole));
            };
            const double radians = angle * 3.14159265358979 / 180;
            lines["page4_Label_" + name + ".fromCentre"] =
                fromCentre(std::cos(radians)) + "," + fromCentre(-std::sin(radians));
        }
    }

    void showLight() {
        std::string colour;
        for (size_t i = 0; i < 3; ++i) {
            const std::string number = std::to_string(model_.light[i]);
            lines[kColourFields[i] + ".text"] = number;
            colour += (i ? ", " : "") + number;
        }
        lines["lineEdit_5.text"] = model_.lightLine;
        lines["label_color_pat_2.styleSheet"] = "background-color: rgb(" + colour + ");";
        showSwitch("pushButton_34", model_.lightPanelOn);
        for (const char *place : {"comboBox_3.enabled", "pushButton_9.enabled", "lineEdit.enabled"})
            lines[place] = model_.lightPanelOn ? "true" : "false";
    }

    void showBattery() {
        const bool connected = model_.battery[1] != 0, charging = connected && model_.battery[2] == 1;
        const std::string percentage = std::to_string(std::min((model_.battery[3] + 1) * 10, 100));
        const std::string level = percentage == "90" ? "100" : percentage;
        lines["label_227.styleSheet"] = connected ? "/png/usb_cnt.png)" : "/png/usb_dis.png)";
        lines["label_228.styleSheet"] = "url(:/page4/png/" +
                                        (charging    ? "chging"
                                         : connected ? "bp_" + level
                                                     : "bp_none") +
                                        ".png)";
        lines["label_240.text"] = connected && !charging ? percentage + "%" : "";
    }

    void showPages() {
        lines["widget_6.styleSheet"] = model_.firstRate[0] ? "44.1KHz.png" : "48KHz.png";
        lines["widget_17.styleSheet"] = model_.firstRate[1] ? "16KHz.png" : "48KHz.png";
        lines["stackedWidget.currentIndex"] = std::to_string(model_.page);
        for (int i = 0; i < 12; ++i) {
            const std::string button = "bt_y" + std::to_string(i);
            lines[button + ".styleSheet"] = model_.highlighted[static_cast<size_t>(i)]
                                                ? "background-color: rgba(110, 110, 110, 0.9);"
                                                : "background-color: none;";
            lines[button + ".isHidden"] = i == 1 || i == 5 || i == 7 || i == 10 ? "true" : "false";
        }
    }

    PanelModel model_;
};
