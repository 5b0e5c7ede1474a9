// What the panel's model knows of the pages: numbers and names of their controls, what is there before a
// start, and inputs.
#pragma once

#include "device/PropertyBlocks.h"

#include <algorithm>
#include <array>
#include <map>
#include <string>

// Offsets in the device's record.
constexpr int kVoiceOn = 20, kVoice = 21, kEchoOn = 22, kNoiseOn = 23, kMicMuted = 24, kMicPage = 25,
              kMonitoringOn = 27, kVolumePage = 32, kSurroundOn = 33, kMuted = 43, kPosition = 45, kRoom = 46,
              kFieldOn = 47, kSpeaker = 49, kRoomOn = 65, kEqualizerOn = 66;

// The controls, or rows of them ("btn_room2" is number 2 of "btn_room"), that do nothing but set a byte and
// send its block.
struct ByteControl {
    enum Kind { Flip, Number, List, Level } kind;
    const char *name;
    int byte;
    int gate; // nothing happens while this byte is 0
};
constexpr ByteControl kByteControls[] = {
    {ByteControl::Flip, "pushButton_5", kMicPage, 0},
    {ByteControl::Flip, "pushButton_8", kVoiceOn, 0},
    {ByteControl::Flip, "checkBox_6", kVoiceOn, 0},
    {ByteControl::Flip, "checkBox_5", kEchoOn, 0},
    {ByteControl::Flip, "pushButton_29", kNoiseOn, 0},
    {ByteControl::Flip, "pushButton_7", kVolumePage, 0},
    {ByteControl::Flip, "pushButton_6", kEqualizerOn, 0},
    {ByteControl::Flip, "pushButton_14", kFieldOn, 0},
    {ByteControl::Flip, "pushButton_28", kRoomOn, 0},
    {ByteControl::Flip, "pushButton_32", kSurroundOn, 0},
    {ByteControl::Flip, "pushButton_33", kRoomOn, 0},
    {ByteControl::Number, "btn_env", kPosition, 0},
    {ByteControl::List, "comboBox_2", kPosition, 0},
    {ByteControl::Number, "btn_room", kRoom, kRoomOn},
    {ByteControl::Number, "btn_mh", kVoice, kVoiceOn},
    {ByteControl::Level, "page4_L", kSpeaker, 0},
    {ByteControl::Level, "page4_R", kSpeaker + 1, 0},
    {ByteControl::Level, "page4_LS", kSpeaker + 2, 0},
    {ByteControl::Level, "page4_RS", kSpeaker + 3, 0},
    {ByteControl::Level, "page4_LB", kSpeaker + 4, 0},
    {ByteControl::Level, "page4_RB", kSpeaker + 5, 0},
    {ByteControl::Level, "page4_c", kSpeaker + 6, 0},
    {ByteControl::Level, "page4_w", kSpeaker + 7, 0},
};

constexpr int8_t kPresets[12][10] = {{-2, 1, 4, 6, -2, 1, 3, 2, -3, -1}, {-6, -6, -6, 6, 0, 6, 0, -1, 0, -6},
                                     {-3, -3, 6, 4, 6, 2, 3, 2, 0, -5},  {-4, 1, -5, -5, -5, 4, 9, 7, -5, -6},
                                     {-2, -3, 1, 3, 1, 1, 1, 0, 0, -1},  {11, 8, 4, 5, -3, 3, 8, -5, 3, 6},
                                     {3, -3, -3, -5, 3, 3, 3, 5, 6, 4},  {1, 1, 2, 4, 1, 1, 0, 1, 0, -1},
                                     {6, 6, 3, -1, 0, 0, 1, 2, 1, 0},    {5, 6, 3, -2, -1, -1, 2, 4, 5, 3},
                                     {-3, -2, -1, 0, 2, 3, 2, 1, 0, 1},  {0, 0, 0, 0, 0, 0, 0, 0, 0, 0}};
const std::map<std::string, std::array<int, 3>> kColours{
    {"pushButton_35", {255, 0, 0}},    {"pushButton_36", {255, 255, 0}}, {"pushButton_37", {0, 255, 0}},
    {"pushButton_38", {0, 255, 255}},  {"pushButton_39", {255, 0, 255}}, {"pushButton_40", {0, 0, 255}},
    {"pushButton_43", {255, 255, 255}}};
const std::string kColourFields[3] = {"lineEdit", "lineEdit_2", "lineEdit_3"};

// What a colour field is given, and the number that it then shows and sends.
struct ColourText {
    const char *text;
    int number;
};
constexpr ColourText kColourTexts[] = {{"0", 0}, {"1", 1},      {"254", 254}, {"300", 255},        {"-5", 0},
                                       {"", 0},  {" 012 ", 12}, {"1e2", 0},   {"99999999999", 255}};

inline int percent(int level) {
    return std::clamp(level, 0, 100);
}

inline int speakerLevel(int level) {
    return std::clamp(level, -13, 4);
}

// What is there before the panel starts.
struct PanelWorld {
    DeviceInfo device{};
    EqCurveStore curveFile{};
    bool locked = false;      // the stored channel lock
    bool taskRuns = false;    // what the library says about the helper process
    bool imageFollows = true; // a write shows in the device's record
};

// A control that was used: "btn_jhq7" is number 7 of its row. Value: a slider's, a list's index, an index
// of kColourTexts.
struct PanelInput {
    std::string control, row;
    int number, value;

    template<typename... Names>
    bool is(Names... names) const {
        return ((control == names) || ...);
    }
};
