// Helper processes, really started and stopped. A process is known by the file name of its executable,
// without regard to case, and only processes of this logon session count.
#pragma once

#include "simulator/CallGuard.h"

namespace Tasks {

// Looks for fileName in folder (may be null), then beside the running executable. Result 1 when it was
// started.
Outcome start(const wchar_t *fileName, const wchar_t *parameters, int32_t show, const wchar_t *folder);

// Ends every process of that name, never the caller; the result is their number.
Outcome stop(const wchar_t *fileName);

// Number of running processes of that name.
Outcome countRunning(const wchar_t *fileName);

} // namespace Tasks
