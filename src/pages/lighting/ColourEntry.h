// Reading what a user typed or pasted into a colour field, on plain values.
#pragma once

#include <string_view>

// The text as a decimal integer: blanks around it and a sign are allowed, anything else gives 0. Numbers
// beyond the range of int give its nearest end.
int readDecimal(std::u16string_view text);

struct ColourEntry {
    int value;    // 0..255
    bool rewrite; // the field must be rewritten, since its text is not just this value in decimal
};

ColourEntry checkColourEntry(std::u16string_view text);
