// Everything that the simulator keeps or is told from outside: values of one registry key. They are read anew
// at each call, so that a running panel sees a change at once. A value of another type or size counts as
// missing.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

namespace Knobs {

constexpr wchar_t kKey[] = L"Software\\QorSoundKit Simulator"; // under HKEY_CURRENT_USER

std::optional<uint32_t> number(const wchar_t *name);
uint32_t number(const wchar_t *name, uint32_t missing);
// As a signed number: 0xFFFFFFFF is -1.
int32_t signedNumber(const wchar_t *name, int32_t missing);

// Environment variables in a REG_EXPAND_SZ value are replaced. Empty when missing.
std::wstring text(const wchar_t *name);

// Fills bytes only when the stored value has exactly that many.
bool readBytes(const wchar_t *name, void *bytes, size_t byteCount);

// The key is created when it is missing; false when the value could not be written.
bool writeNumber(const wchar_t *name, uint32_t value);
bool writeBytes(const wchar_t *name, const void *bytes, size_t byteCount);

void forgetAll();

} // namespace Knobs
