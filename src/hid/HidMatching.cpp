#include "hid/HidMatching.h"

#include <cstdio>

namespace HidMatching {

namespace {

// Device paths are ASCII where it matters here.
std::wstring lowerCase(std::wstring text) {
    for (wchar_t &letter : text) {
        if (letter >= L'A' && letter <= L'Z')
            letter = static_cast<wchar_t>(letter - L'A' + L'a');
    }
    return text;
}

} // namespace

std::wstring interfacePattern(uint32_t interfaceNumber, uint32_t reportId) {
    if (interfaceNumber == 0 && reportId == 0)
        return {};
    char digits[9];
    std::snprintf(digits, sizeof digits, "%.2x", interfaceNumber);
    return L"&mi_" + std::wstring(digits, digits + std::char_traits<char>::length(digits));
}

bool pathMatches(const std::wstring &path, const std::wstring &pattern) {
    return !pattern.empty() && lowerCase(path).find(pattern) != std::wstring::npos;
}

bool idMatches(uint32_t wanted, uint16_t actual) {
    return wanted == 0 || wanted == actual;
}

} // namespace HidMatching
