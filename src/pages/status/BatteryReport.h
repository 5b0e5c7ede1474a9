// The battery request, and what the status labels show for a reply, on plain values.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>

struct BatteryView {
    std::string usbImage; // resource paths without ":"
    std::string batteryImage;
    std::string percentage; // empty unless the headset is connected and runs on its battery
};

std::array<uint8_t, 64> makeBatteryRequest();

// reply byte 1: connected over USB (0 no); 2: charging (1 yes); 3: battery step, (step + 1) * 10 percent.
BatteryView describeBattery(const std::array<uint8_t, 64> &reply);

// Tells when the battery has fallen to 20 % and to 10 %, each once until it is charged.
class LowBatteryWatch {
public:
    // reply: as above. The percentage, when this reply is the one to tell of.
    std::optional<int> hear(const std::array<uint8_t, 64> &reply);

private:
    int lastTold_ = 100; // percent
};
