// Real message boxes, answered by clicks; only the user's locale is replaced.
#include "helpers/MessageBoxes.h"
#include "support/BoxAnswerer.h"

#include <functional>
#include <gtest/gtest.h>

static LCID userLocale = 1033;
extern "C" LCID WINAPI fakeUserLocale() __asm__("GetUserDefaultLCID");
extern "C" {
void *fakeUserLocaleImport __asm__("__imp_GetUserDefaultLCID") = reinterpret_cast<void *>(&fakeUserLocale);
}
extern "C" LCID WINAPI fakeUserLocale() {
    return userLocale;
}

namespace {

TEST(MessageBoxes, ShowTheChosenTextTitleAndButtonsWithoutOwner) {
    const auto byLocale = [](LCID locale) {
        return [=] {
            userLocale = locale;
            return ShowMessageByLocale(L"en", L"中文", L"t", MB_OK);
        };
    };
    const auto byFlag = [](bool english) {
        return [=] { return ShowMessageByFlag(L"en", L"中文", L"t", english, MB_OK); };
    };
    const struct {
        std::function<int()> show;
        const wchar_t *text, *title;
        size_t buttonCount = 1, clicked = 0;
        int result = IDOK;
    } cases[] = {
        {[] { return ShowMessage(QStringLiteral("  找不到设备"), L"温馨提示", MB_OK); }, L"  找不到设备",
         L"温馨提示"},
        {[] { return ShowMessage(QStringLiteral("sure?"), L"t", MB_OKCANCEL); }, L"sure?", L"t", 2, 1,
         IDCANCEL},
        {[] { return ShowNumber(-16777216.5f), IDOK; }, L"-16777216.000", L"Error"}, // the system's own title
        {byFlag(true), L"en", L"t"},
        {byFlag(false), L"中文", L"t"},
        {byLocale(2052), L"中文", L"t"},
        {byLocale(1028), L"en", L"t"},    // another Chinese locale
        {byLocale(0x10804), L"en", L"t"}, // 2052 with another sort order
    };
    for (const auto &c : cases) {
        BoxAnswerer answerer(c.clicked);
        EXPECT_EQ(c.show(), c.result);
        const BoxAnswerer::Box &box = answerer.box();
        EXPECT_EQ(box.text, c.text);
        EXPECT_EQ(box.title, c.title);
        EXPECT_EQ(box.buttons.size(), c.buttonCount);
        EXPECT_EQ(box.owner, nullptr);
    }
}

} // namespace
