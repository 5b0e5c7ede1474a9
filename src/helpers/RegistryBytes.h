// What the bytes of a registry value mean.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace Registry {

// UTF-16LE: whole characters, the terminator (if any) included.
inline std::wstring charactersOf(const std::vector<uint8_t> &bytes) {
    std::wstring text;
    text.reserve(bytes.size() / 2);
    for (size_t i = 0; i + 1 < bytes.size(); i += 2)
        text += static_cast<wchar_t>(bytes[i] | bytes[i + 1] << 8);
    return text;
}

// Little-endian, from the first four bytes; those that a damaged value lacks count as zero.
inline uint32_t numberOf(const std::vector<uint8_t> &bytes) {
    uint32_t number = 0;
    for (size_t i = 0; i < 4 && i < bytes.size(); ++i)
        number |= uint32_t{bytes[i]} << (8 * i);
    return number;
}

} // namespace Registry
