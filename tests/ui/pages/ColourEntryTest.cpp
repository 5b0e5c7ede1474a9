#include "ui/pages/ColourEntry.h"

#include <gtest/gtest.h>
#include <limits>

namespace {

TEST(ColourEntry, ReadsTypedAndPastedText) {
    constexpr int most = std::numeric_limits<int>::max();
    constexpr int least = std::numeric_limits<int>::min();
    const struct {
        std::u16string_view text;
        int decimal;
        ColourEntry entry;
    } cases[] = {
        {u"0", 0, {0, false}},
        {u"255", 255, {255, false}},
        {u"256", 256, {255, true}},
        {u"300", 300, {255, true}},
        {u"-5", -5, {0, true}},
        {u"-0", 0, {0, true}},
        {u"", 0, {0, true}},
        {u" 12 ", 12, {12, true}},
        {u"\t\u300012\u00A0", 12, {12, true}},
        {u"012", 12, {12, true}},
        {u"abc", 0, {0, true}},
        {u"12a", 0, {0, true}},
        {u"\uFF11\uFF12", 0, {0, true}},    // full-width digits
        {u"4294967297", most, {255, true}}, // 1 when cut to 32 bits
        {u"99999999999999999999", most, {255, true}},
        {u"-99999999999999999999", least, {0, true}},
        {u"99999999999999999999x", 0, {0, true}},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(std::string(c.text.begin(), c.text.end()));
        EXPECT_EQ(readDecimal(c.text), c.decimal);
        const ColourEntry entry = checkColourEntry(c.text);
        EXPECT_EQ(entry.value, c.entry.value);
        EXPECT_EQ(entry.rewrite, c.entry.rewrite);
    }
}

} // namespace
