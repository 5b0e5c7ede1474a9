// Real message boxes, answered by clicks; only the user's locale is replaced.
#include "helpers/MessageBoxes.h"
#include "support/BoxAnswerer.h"

#include <gtest/gtest.h>

#include <clocale>

static LCID userLocale = 1033;
extern "C" LCID WINAPI fakeUserLocale() __asm__("GetUserDefaultLCID");
extern "C" {
void *fakeUserLocaleImport __asm__("__imp_GetUserDefaultLCID") = reinterpret_cast<void *>(&fakeUserLocale);
}
extern "C" LCID WINAPI fakeUserLocale() {
    return userLocale;
}

namespace {

template<typename Call>
BoxAnswerer::Box shown(Call call, size_t button = 0, int result = IDOK) {
    BoxAnswerer answerer(button);
    EXPECT_EQ(call(), result);
    return answerer.box();
}

TEST(MessageBoxes, ShowsTextTitleAndButtonsWithoutOwner) {
    const struct {
        const wchar_t *text, *title;
        unsigned flags;
        size_t button, buttonCount;
        int result;
        const wchar_t *shownTitle;
    } cases[] = {
        {L"install driver FAILED", nullptr, MB_OK, 0, 1, IDOK, L"Error"}, // the system's own title
        {L"  找不到设备", L"温馨提示", MB_OK, 0, 1, IDOK, L"温馨提示"},
        {L"发现新版本，下载请按OK键", L"Download", MB_OKCANCEL, 1, 2, IDCANCEL, L"Download"},
    };
    for (const auto &c : cases) {
        const auto box = shown([&] { return ShowMessage(QString::fromWCharArray(c.text), c.title, c.flags); },
                               c.button, c.result);
        EXPECT_EQ(box.text, c.text);
        EXPECT_EQ(box.title, c.shownTitle);
        EXPECT_EQ(box.buttons.size(), c.buttonCount);
        EXPECT_EQ(box.owner, nullptr);
    }
}

TEST(MessageBoxes, ChoosesTheTextByFlagOrByTheUsersLocale) {
    for (const bool english : {true, false})
        EXPECT_EQ(shown([=] { return ShowMessageByFlag(L"en", L"中文", L"t", english, MB_OK); }).text,
                  english ? L"en" : L"中文");
    // 1028 is another Chinese locale; 0x10804 is 2052 with another sort order.
    for (const LCID locale : {LCID{2052}, LCID{1028}, LCID{1033}, LCID{0x10804}}) {
        userLocale = locale;
        EXPECT_EQ(shown([] { return ShowMessageByLocale(L"en", L"中文", L"t", MB_OK); }).text,
                  locale == 2052 ? L"中文" : L"en")
            << locale;
    }
}

TEST(MessageBoxes, ShowsNumbersWithThreeDecimalsAndAPoint) {
    std::setlocale(LC_ALL, "German");
    for (const auto &[value, text] :
         {std::pair{1.0005f, L"1.000"}, {-0.5f, L"-0.500"}, {16777216.f, L"16777216.000"}})
        EXPECT_EQ(shown([v = value] { return ShowNumber(v), IDOK; }).text, text);
    std::setlocale(LC_ALL, "C");
}

} // namespace
