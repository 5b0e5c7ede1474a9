// headset.exe: steers the simulated headset while the panel runs. Without arguments it lists its commands.
// Ends with 1, and a line on the error output, when a command cannot be carried out.
#include "simulator/Knobs.h"
#include "simulator/receiver/VirtualReceiver.h"

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <stdexcept>

namespace {

using Arguments = std::vector<std::string>;

struct Command {
    const char *name;
    size_t argumentCount;
    const char *help;
    void (*run)(const Arguments &arguments);
};

uint32_t numberFrom(const std::string &text) {
    char *end = nullptr;
    const long long number = std::strtoll(text.c_str(), &end, 0);
    if (text.empty() || *end != '\0' || number < INT32_MIN || number > UINT32_MAX)
        throw std::runtime_error("\"" + text + "\" is not a number of 32 bits");
    return static_cast<uint32_t>(number);
}

void set(const wchar_t *knob, uint32_t value) {
    if (!Knobs::writeNumber(knob, value))
        throw std::runtime_error("the registry value cannot be written");
}

// The panel asks as soon as Windows tells of the change, so the library's answers change first.
void plug(const Arguments &) {
    set(L"DeviceCount", 1);
    if (VirtualReceiver::isSupported())
        VirtualReceiver().plug();
}

void unplug(const Arguments &) {
    set(L"DeviceCount", 0);
    if (VirtualReceiver::isSupported())
        VirtualReceiver().unplug();
}

void resume(const Arguments &arguments) {
    if (Knobs::number(L"DeviceCount", 1) != 0)
        plug(arguments);
}

void pressKey(const Arguments &) {
    constexpr unsigned kAnswerTimeoutMs = 3000;
    if (!VirtualReceiver::isSupported())
        throw std::runtime_error("the key needs the virtual receiver, which exists under Wine only");
    VirtualReceiver receiver;
    if (!receiver.isPlugged())
        throw std::runtime_error("the receiver is not plugged in");
    const std::optional<uint8_t> state = receiver.pressKey(kAnswerTimeoutMs);
    if (!state)
        throw std::runtime_error("no answer; does the panel run?");
    std::printf("the panel answers: virtual 7.1 is %s\n", *state ? "on" : "off");
}

void setBattery(const Arguments &arguments) {
    const uint32_t percent = numberFrom(arguments[0]);
    if (percent < 10 || percent > 100)
        throw std::runtime_error("the battery shows 10 to 100 percent, in steps of 10");
    set(L"BatteryStep", percent / 10 - 1);
}

void setKnob(const Arguments &arguments) {
    set(std::wstring(arguments[0].begin(), arguments[0].end()).c_str(), numberFrom(arguments[1]));
}

void reset(const Arguments &arguments) {
    Knobs::forgetAll();
    plug(arguments);
}

const Command kCommands[] = {
    {"key", 0, "press the headset's own button", pressKey},
    {"plug", 0, "plug the receiver in", plug},
    {"unplug", 0, "pull the receiver out", unplug},
    {"on", 0, "switch the headset on", [](const Arguments &) { set(L"UsbConnected", 1); }},
    {"off", 0, "switch the headset off", [](const Arguments &) { set(L"UsbConnected", 0); }},
    {"battery", 1, "PERCENT: charge or drain the battery, 10 to 100", setBattery},
    {"charge", 0, "put the headset on the charger", [](const Arguments &) { set(L"Charging", 1); }},
    {"discharge", 0, "take it off the charger", [](const Arguments &) { set(L"Charging", 0); }},
    {"refuse", 0, "let every HID report fail", [](const Arguments &) { set(L"RefuseReports", 1); }},
    {"accept", 0, "let them succeed", [](const Arguments &) { set(L"RefuseReports", 0); }},
    {"set", 2, "NAME NUMBER: any value that simulator/README.md lists", setKnob},
    {"reset", 0, "everything as it was, settings included", reset},
    {"resume", 0, "plug the receiver in again unless it was pulled out: Wine forgets it when it ends",
     resume},
};

int listCommands() {
    std::puts("Steers the simulated headset while the panel runs.");
    for (const Command &command : kCommands)
        std::printf("  %-10s %s\n", command.name, command.help);
    return 1;
}

} // namespace

int main(int argc, char **argv) {
    try {
        const Arguments words(argv + 1, argv + argc);
        for (const Command &command : kCommands) {
            if (words.size() != 1 + command.argumentCount || words[0] != command.name)
                continue;
            command.run(Arguments(words.begin() + 1, words.end()));
            return 0;
        }
        return listCommands();
    } catch (const std::exception &error) {
        std::fprintf(stderr, "error: %s\n", error.what());
        return 1;
    }
}
