#include "window/language/LanguageChoice.h"

#include "helpers/ProductSettings.h"

#include <windows.h>

namespace {

constexpr uint32_t kChinesePrc = 2052;
constexpr int8_t kChinese = 0;
constexpr int8_t kEnglish = 1;
constexpr wchar_t kLanguageValue[] = L"language";

} // namespace

int8_t chooseLanguage(uint32_t systemLocale, std::optional<uint32_t> stored) {
    if (stored)
        return static_cast<int8_t>(*stored);
    return systemLocale == kChinesePrc ? kChinese : kEnglish;
}

int8_t ChooseLanguage() {
    return chooseLanguage(GetSystemDefaultLCID(), ProductSettings::readDword(kLanguageValue));
}

bool storeLanguage(int8_t language) {
    return ProductSettings::writeDword(kLanguageValue, static_cast<uint32_t>(int32_t{language}));
}
