// Rules by which a HID interface is recognised among all that are present.
#pragma once

#include <cstdint>
#include <string>

namespace HidMatching {

// What the lower-cased device path must contain, such as "&mi_01" for interface 1. Empty, which matches no
// device at all, when interface number and report ID are both 0.
std::wstring interfacePattern(uint32_t interfaceNumber, uint32_t reportId);

// Compares without regard to case: Windows gives paths in lower case or in upper case, by their source.
bool pathMatches(const std::wstring &path, const std::wstring &pattern);

// Vendor or product ID; a wanted ID of 0 matches any.
bool idMatches(uint32_t wanted, uint16_t actual);

} // namespace HidMatching
