// Plain Windows message boxes without owner; callable from any thread. flags and result are those of
// MessageBoxW; a null title gives the system's default caption.
#pragma once

#include <QString>
#include <windows.h>

int ShowMessage(const QString &text, const wchar_t *title, unsigned flags);

// English when useEnglish, else Chinese.
int ShowMessageByFlag(const wchar_t *english, const wchar_t *chinese, const wchar_t *title, bool useEnglish,
                      unsigned flags);

// Chinese when the user's locale is 2052 (Chinese, PRC), else English.
int ShowMessageByLocale(const wchar_t *english, const wchar_t *chinese, const wchar_t *title, unsigned flags);

// Diagnostics: the value as "%.3f", no title.
void ShowNumber(float value);
