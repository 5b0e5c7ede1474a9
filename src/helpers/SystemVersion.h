// Versions of the running Windows.
#pragma once

#include <cstdint>

namespace Registry {

struct FileVersion {
    uint16_t major, minor, build, revision;
};

// Of kernel32.dll; zeros when it cannot be read.
FileVersion GetSystemFileVersion();

} // namespace Registry

struct WindowsVersion {
    uint32_t major, minor, build;
};

// What the system really is, 10.0.22631 for instance. GetVersionEx gives the newest version that the
// program's manifest names instead.
WindowsVersion runningWindows();
