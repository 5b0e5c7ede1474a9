// The journal of all calls, one readable line each, in a text file that every panel of this user appends to.
// Callable from any thread. Failures are silent: a journal that cannot be written never disturbs the panel.
#pragma once

#include <string>

namespace Journal {

// Value "JournalPath", else "%LOCALAPPDATA%\QorSoundKit Simulator\journal.txt".
std::wstring path();

// Appends "2026-11-22 23:34:28.123 <process id> <thread id> <call>" as UTF-8 with a line feed. A file that
// has grown to 4 MB is first renamed to "<path>.old".
void append(const std::string &call) noexcept;

} // namespace Journal
