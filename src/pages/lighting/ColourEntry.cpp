#include "pages/lighting/ColourEntry.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <string>

namespace {

// Blanks as they come with pasted text: controls, the space, and the no-break and the ideographic space.
bool isBlank(char16_t unit) {
    return unit <= u' ' || unit == 0x00A0 || unit == 0x3000;
}

std::u16string_view trimmed(std::u16string_view text) {
    while (!text.empty() && isBlank(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && isBlank(text.back()))
        text.remove_suffix(1);
    return text;
}

// value: 0..255
bool isPlainDecimal(std::u16string_view text, int value) {
    const std::string digits = std::to_string(value);
    return std::equal(text.begin(), text.end(), digits.begin(), digits.end(),
                      [](char16_t unit, char digit) { return unit == static_cast<unsigned char>(digit); });
}

} // namespace

int readDecimal(std::u16string_view text) {
    text = trimmed(text);
    const bool negative = !text.empty() && text.front() == u'-';
    if (negative || (!text.empty() && text.front() == u'+'))
        text.remove_prefix(1);

    constexpr int64_t beyondInt = int64_t{1} << 32;
    int64_t value = 0;
    for (const char16_t unit : text) {
        if (unit < u'0' || unit > u'9')
            return 0;
        value = std::min(value * 10 + (unit - u'0'), beyondInt);
    }
    if (negative)
        value = -value;
    return static_cast<int>(
        std::clamp<int64_t>(value, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()));
}

ColourEntry checkColourEntry(std::u16string_view text) {
    const int value = std::clamp(readDecimal(text), 0, 255);
    return {value, !isPlainDecimal(text, value)};
}
