#include "ui/LanguageChoice.h"

#include "helpers/ProductSettings.h"
#include "helpers/Registry.h"

#include <gtest/gtest.h>

#include <windows.h>

static LCID systemLocale = 1033;
extern "C" LCID WINAPI fakeSystemLocale() __asm__("GetSystemDefaultLCID");
extern "C" {
void *fakeSystemLocaleImport __asm__("__imp_GetSystemDefaultLCID") =
    reinterpret_cast<void *>(&fakeSystemLocale);
}
extern "C" LCID WINAPI fakeSystemLocale() {
    return systemLocale;
}

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
        {0, std::nullopt, 1},
        {2052, 1, 1},
        {1033, 0, 0},
        {2052, 2, 2},
        {2052, 127, 127},
        {2052, 128, -128},
        {2052, 200, -56},
        {2052, 256, 0},
        {1033, 0xFFFFFFFF, -1},
    };
    for (const Case &c : cases) {
        EXPECT_EQ(chooseLanguage(c.locale, c.stored), c.language)
            << c.locale << " " << (c.stored ? std::to_string(*c.stored) : "missing");
    }
}

// The same with the real registry: key missing, value missing, value of the wrong type, value there.
TEST(LanguageChoice, ReadsTheRegistry) {
    const std::wstring key = ProductSettings::kProductKey;
    ASSERT_FALSE(Registry::KeyExists(key));
    systemLocale = 2052;
    EXPECT_EQ(ChooseLanguage(), 0);

    Registry::CreateKey(key);
    EXPECT_EQ(ChooseLanguage(), 0);
    systemLocale = 1033;
    EXPECT_EQ(ChooseLanguage(), 1);

    for (const int language : {0, 1, 127, -56, -1}) {
        EXPECT_TRUE(storeLanguage(static_cast<int8_t>(language)));
        EXPECT_EQ(Registry::ReadDwordValue(key, L"language"),
                  static_cast<uint32_t>(language)); // sign-extended
        EXPECT_EQ(ChooseLanguage(), language);
    }

    Registry::DeleteValue(key, L"language");
    Registry::WriteStringValue(key, L"language", L"0");
    EXPECT_EQ(ChooseLanguage(), 1);
}

} // namespace
