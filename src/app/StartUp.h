// The decisions of start-up before there is a GUI, in the order in which main() takes them.
#pragma once

#include <optional>

namespace StartUp {

// Exit code with which main() ends at once, or nothing to go on.
using Ending = std::optional<int>;

// A process that is not elevated starts itself again elevated and ends: 1, or -1 when that was refused.
Ending ensureElevated();

// A line in the log: which panel on which Windows.
void logVersions();

// Asks a running instance to end, through the registry, and gives it a second. True when there is one.
bool takeOverFromRunningInstance();

// Without a headset: message, withdrawn request, exit code 0.
Ending requireDevice();

} // namespace StartUp
