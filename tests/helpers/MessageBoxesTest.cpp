// Real message boxes, answered by clicks; only the user's locale is replaced.
#include "helpers/MessageBoxes.h"
#include "support/BoxAnswerer.h"

#include <gtest/gtest.h>

#include <clocale>
#include <limits>
#include <ostream>

static LCID userLocale = 1033;
extern "C" LCID WINAPI fakeUserLocale() __asm__("GetUserDefaultLCID");
extern "C" {
void *fakeUserLocaleImport __asm__("__imp_GetUserDefaultLCID") = reinterpret_cast<void *>(&fakeUserLocale);
}
extern "C" LCID WINAPI fakeUserLocale() {
    return userLocale;
}

namespace {

constexpr wchar_t kDefaultTitle[] = L"Error"; // the system's caption for a box without title

struct Shown {
    int result;
    BoxAnswerer::Box box;
};

template<typename Call>
Shown show(Call call, size_t button = 0) {
    BoxAnswerer answerer(button);
    const int result = call();
    return {result, answerer.box()};
}

TEST(MessageBoxes, ShowsTextTitleAndButtonsWithoutOwner) {
    struct Case {
        const wchar_t *text;
        const wchar_t *title;
        unsigned flags;
        size_t button;
        size_t buttonCount;
        int result;
        const wchar_t *shownTitle;
    };
    const Case cases[] = {
        {L"Please select a EARPHONE binary file to update", nullptr, MB_OK, 0, 1, IDOK, kDefaultTitle},
        {L"  找不到设备", L"温馨提示", MB_OK, 0, 1, IDOK, L"温馨提示"},
        {L"Download end,Press OK to upgrade ?", L"upgrade", MB_OKCANCEL, 0, 2, IDOK, L"upgrade"},
        {L"发现新版本，下载请按OK键", L"Download", MB_OKCANCEL, 1, 2, IDCANCEL, L"Download"},
    };
    for (const Case &c : cases) {
        const Shown shown =
            show([&] { return ShowMessage(QString::fromWCharArray(c.text), c.title, c.flags); }, c.button);
        ASSERT_TRUE(shown.box.seen);
        EXPECT_EQ(shown.box.text, c.text);
        EXPECT_EQ(shown.box.title, c.shownTitle);
        EXPECT_EQ(shown.box.buttons.size(), c.buttonCount);
        EXPECT_EQ(shown.box.owner, nullptr);
        EXPECT_EQ(shown.result, c.result);
    }
}

TEST(MessageBoxes, ChoosesTheTextByFlagOrByTheUsersLocale) {
    const auto byFlag = [](bool english) {
        return show([=] { return ShowMessageByFlag(L"english", L"中文", L"t", english, MB_OK); }).box.text;
    };
    EXPECT_EQ(byFlag(true), L"english");
    EXPECT_EQ(byFlag(false), L"中文");

    // 1028, 3076 and 4100 are the other Chinese locales; 0x10804 is 2052 with another sort order.
    for (const LCID locale : {LCID{2052}, LCID{1028}, LCID{3076}, LCID{4100}, LCID{1033}, LCID{0x10804}}) {
        userLocale = locale;
        const Shown shown = show([] { return ShowMessageByLocale(L"english", L"  中文", L"t", MB_OK); });
        EXPECT_EQ(shown.box.text, locale == 2052 ? L"  中文" : L"english") << locale;
    }
    userLocale = 1033;
}

TEST(MessageBoxes, ShowsNumbersWithThreeDecimalsAndAPoint) {
    std::setlocale(LC_ALL, "German");
    const auto shown = [](float value) { return show([=] { return ShowNumber(value), 0; }).box; };
    EXPECT_EQ(shown(1.0005f).text, L"1.000"); // the float lies just below
    EXPECT_EQ(shown(-0.5f).text, L"-0.500");
    EXPECT_EQ(shown(16777216.f).text, L"16777216.000");
    EXPECT_EQ(shown(0).title, kDefaultTitle);
    EXPECT_TRUE(shown(std::numeric_limits<float>::quiet_NaN()).seen);
    std::setlocale(LC_ALL, "C");
}

} // namespace
