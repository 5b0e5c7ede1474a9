// The program's values under HKEY_LOCAL_MACHINE\SOFTWARE\QorSoundKit (and few under the user's own key), with
// the rule that a missing key means that every value is missing. A value of the wrong type counts as missing
// and is logged. Nothing here throws.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace ProductSettings {

constexpr wchar_t kProductKey[] = L"HKEY_LOCAL_MACHINE\\SOFTWARE\\QorSoundKit";
constexpr wchar_t kUserKey[] = L"HKEY_CURRENT_USER\\SOFTWARE\\QorSoundKit";

// Values that several places use; a value of one page or dialog is named there.
constexpr wchar_t kExitRequest[] = L"exitCmd";        // DWORD, nonzero asks the running instance to end
constexpr wchar_t kTrayIconShown[] = L"isAddSysicon"; // DWORD, 0: closing the window ends the program
constexpr wchar_t kStartTipShown[] = L"isStartShow";  // DWORD, nonzero: the start tip is shown

std::optional<uint32_t> readDword(const wchar_t *name, const wchar_t *key = kProductKey);
std::optional<std::wstring> readString(const wchar_t *name);

// A failed write is logged; false tells of it.
bool writeDword(const wchar_t *name, uint32_t value, const wchar_t *key = kProductKey);
bool writeBinary(const wchar_t *name, const void *bytes, size_t byteCount);

// Whether an instance has been asked to end. The request is withdrawn with that: it has been followed, or
// nobody shall follow it.
bool takeExitRequest();

// "DisplayName", or "QorSound Kit" where it is missing: window title and tray tool tip.
std::wstring productDisplayName();

} // namespace ProductSettings
