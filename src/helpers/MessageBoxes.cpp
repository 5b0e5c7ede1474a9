#include "helpers/MessageBoxes.h"

namespace {

constexpr LCID kChinesePrc = 2052;

} // namespace

int ShowMessage(const QString &text, const wchar_t *title, unsigned flags) {
    return MessageBoxW(nullptr, text.toStdWString().c_str(), title, flags);
}

int ShowMessageByFlag(const wchar_t *english, const wchar_t *chinese, const wchar_t *title, bool useEnglish,
                      unsigned flags) {
    return MessageBoxW(nullptr, useEnglish ? english : chinese, title, flags);
}

int ShowMessageByLocale(const wchar_t *english, const wchar_t *chinese, const wchar_t *title,
                        unsigned flags) {
    return ShowMessageByFlag(english, chinese, title, GetUserDefaultLCID() != kChinesePrc, flags);
}

void ShowNumber(float value) {
    ShowMessage(QString::asprintf("%.3f", static_cast<double>(value)), nullptr, MB_OK);
}
