// Real message boxes, answered by clicks; only the user's locale is replaced.
#include "helpers/MessageBoxes.h"
#include "support/BoxAnswerer.h"

#include <gtest/gtest.h>

static LCID userLocale;
extern "C" LCID WINAPI fakeUserLocale() __asm__("GetUserDefaultLCID");
extern "C" {
void *fakeUserLocaleImport __asm__("__imp_GetUserDefaultLCID") = reinterpret_cast<void *>(&fakeUserLocale);
}
extern "C" LCID WINAPI fakeUserLocale() {
    return userLocale;
}

TEST(MessageBoxes, ChineseIsForTheLocale2052Only) {
    for (const LCID locale : {1033, 2052, 1028, 0x10804}) {
        userLocale = locale;
        BoxAnswerer answerer(1);
        EXPECT_EQ(ShowMessageByLocale(L"en", L"中文", L"t", MB_OKCANCEL), IDCANCEL);
        EXPECT_EQ(answerer.box().text, locale == 2052 ? L"中文" : L"en");
        EXPECT_EQ(answerer.box().title, L"t");
        EXPECT_EQ(answerer.box().owner, nullptr);
    }
    BoxAnswerer answerer(0);
    ShowNumber(-16777216.5f);
    EXPECT_EQ(answerer.box().text, L"-16777216.000");
}
