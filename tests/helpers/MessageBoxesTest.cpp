// Real message boxes, answered by clicks; only the user's locale is replaced.
#include "helpers/MessageBoxes.h"
#include "support/BoxAnswerer.h"

#include <gtest/gtest.h>

#include <utility>

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
    const struct {
        const wchar_t *text;
        const wchar_t *title; // null: the system's caption
        unsigned flags;
        size_t button;
        size_t buttonCount;
        int result;
    } cases[] = {
        {L"Please select a EARPHONE binary file to update", nullptr, MB_OK, 0, 1, IDOK},
        {L"Download end,Press OK to upgrade ?", L"upgrade", MB_OKCANCEL, 0, 2, IDOK},
        {L"发现新版本，下载请按OK键", L"温馨提示", MB_OKCANCEL, 1, 2, IDCANCEL},
    };
    for (const auto &c : cases) {
        const Shown shown =
            show([&] { return ShowMessage(QString::fromWCharArray(c.text), c.title, c.flags); }, c.button);
        ASSERT_TRUE(shown.box.seen);
        EXPECT_EQ(shown.box.text, c.text);
        EXPECT_EQ(shown.box.title, c.title ? c.title : kDefaultTitle);
        EXPECT_EQ(shown.box.buttons.size(), c.buttonCount);
        EXPECT_EQ(shown.box.owner, nullptr);
        EXPECT_EQ(shown.result, c.result);
    }
}

TEST(MessageBoxes, ChoosesTheTextByFlagOrByTheUsersLocale) {
    for (const bool english : {true, false}) {
        const Shown shown =
            show([=] { return ShowMessageByFlag(L"english", L"中文", L"t", english, MB_OK); });
        EXPECT_EQ(shown.box.text, english ? L"english" : L"中文");
    }
    // 1028 is another Chinese locale; 0x10804 is 2052 with another sort order.
    for (const LCID locale : {LCID{2052}, LCID{1028}, LCID{1033}, LCID{0x10804}}) {
        userLocale = locale;
        const Shown shown = show([] { return ShowMessageByLocale(L"english", L"  中文", L"t", MB_OK); });
        EXPECT_EQ(shown.box.text, locale == 2052 ? L"  中文" : L"english") << locale;
    }
}

TEST(MessageBoxes, ShowsNumbersWithThreeDecimals) {
    for (const auto &[value, text] : {std::pair{1.0005f, L"1.000"}, {-0.5f, L"-0.500"}})
        EXPECT_EQ(show([v = value] { return ShowNumber(v), 0; }).box.text, text);
}

} // namespace
