// The process itself: the single-instance name, elevation, and starting again elevated.
#pragma once

#include "simulator/CallGuard.h"

namespace Instance {

// Takes the name for the rest of the process's life; 1 when somebody had it already.
Outcome claimName(const wchar_t *mutexName);

// Knob "ForceElevated" (0 or 1) overrides what the process's token says.
Outcome isElevated();

// Starts this executable again through the system's elevation prompt; 1 when that happened. With the knob
// "RestartResult" nothing is started and the knob's value is the result.
Outcome restartElevated();

} // namespace Instance
