#include "ui/LanguageChoice.h"

#include "helpers/ProductSettings.h"
#include "helpers/Registry.h"

#include <gtest/gtest.h>

#include <windows.h>

namespace {

TEST(LanguageChoice, StoredValueWinsOverTheSystemsLocale) {
    struct Case {
        LCID locale;
        std::optional<uint32_t> stored;
        int language;
    };
    const Case cases[] = {
        {2052, std::nullopt, 0},
        {1028, std::nullopt, 1}, // Chinese, Taiwan
        {3076, std::nullopt, 1}, // Chinese, Hong Kong
        {1033, std::nullopt, 1},
        {2052, 1, 1},
        {1033, 0, 0},
        {2052, 2, 2},
        {2052, 128, -128},
        {2052, 256, 0},
        {1033, 0xFFFFFFFF, -1},
    };
    for (const Case &c : cases) {
        EXPECT_EQ(chooseLanguage(c.locale, c.stored), c.language)
            << c.locale << " " << (c.stored ? std::to_string(*c.stored) : "missing");
    }
}

// The same with the real registry: key missing, value there, value of the wrong type.
TEST(LanguageChoice, ReadsTheRegistry) {
    const std::wstring key = ProductSettings::kProductKey;
    const int unset = chooseLanguage(GetSystemDefaultLCID(), std::nullopt);
    ASSERT_FALSE(Registry::KeyExists(key));
    EXPECT_EQ(ChooseLanguage(), unset);

    Registry::CreateKey(key);
    for (const int language : {0, 127, -56}) {
        EXPECT_TRUE(storeLanguage(static_cast<int8_t>(language)));
        EXPECT_EQ(Registry::ReadDwordValue(key, L"language"),
                  static_cast<uint32_t>(language)); // sign-extended
        EXPECT_EQ(ChooseLanguage(), language);
    }
    Registry::DeleteValue(key, L"language");
    Registry::WriteStringValue(key, L"language", unset ? L"0" : L"1");
    EXPECT_EQ(ChooseLanguage(), unset);
}

} // namespace
