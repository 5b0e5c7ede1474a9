// The receiver's answers to raw 64-byte reports: 0x0A sets the LED (kept as registry value "LedReport"), 0x0B
// asks for the battery (knobs "UsbConnected", "Charging", "BatteryStep"), any other is echoed with the
// firmware version (knob "FirmwareVersion") as the result. The knob "RefuseReports" makes every transfer
// fail.
#pragma once

#include "simulator/CallGuard.h"

#include <string>

namespace Reports {

constexpr size_t kReportSize = 64;

// The four numbers that select the receiver's HID interface: vendor, product, interface, report id.
constexpr uint32_t kSelectors[4] = {0x040B, 0xF779, 3, 2};
constexpr uint32_t kOtherProduct = 0xF778; // the second receiver, which is addressed the same way

// All four are left alone when no receiver is plugged in.
Outcome readSelectors(uint32_t *vendor, uint32_t *product, uint32_t *interfaceNumber, uint32_t *reportId);

// input may be null. The result is the number of bytes moved or the firmware version; 0 is failure, with
// input untouched.
Outcome transfer(uint32_t vendor, uint32_t product, uint32_t interfaceNumber, uint32_t reportId,
                 const uint8_t *output, uint8_t *input);

// The report's bytes up to the last that is not zero.
std::string digest(const uint8_t *report);

} // namespace Reports
