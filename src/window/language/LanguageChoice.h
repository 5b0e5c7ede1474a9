// The interface language at start-up and its form in the registry value "language".
#pragma once

#include <cstdint>
#include <optional>

// A stored value wins, truncated to a signed byte: 128..255 become negative. Without one the system's locale
// decides: 2052 (Chinese, PRC) gives 0 (Chinese), every other one, other Chinese locales included, 1
// (English).
int8_t chooseLanguage(uint32_t systemLocale, std::optional<uint32_t> stored);

// The same, for this system and its registry.
int8_t ChooseLanguage();

// Stores the language as the sign-extended byte. A failed write is logged; false tells of it.
bool storeLanguage(int8_t language);
