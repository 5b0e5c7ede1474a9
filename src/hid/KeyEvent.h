// The receiver's key-event report and the answer to it. Both are report data without the report-ID byte:
// FF FF FF FF 01, in the answer followed by the state that the switch is about to take.
#pragma once

#include <cstddef>
#include <cstdint>

namespace KeyEvent {

constexpr size_t kReportSize = 64;

// data holds at least kReportSize bytes.
bool isButtonPress(const uint8_t *data);

// Overwrites kReportSize bytes with the answer for a switch (0/1) that holds switchState before its toggle.
void writeAnswer(uint8_t *data, uint8_t switchState);

} // namespace KeyEvent
