#include "helpers/SystemMessage.h"

#include "helpers/WinHandles.h"

std::wstring SystemMessage(DWORD errorCode) {
    wchar_t *buffer = nullptr;
    const DWORD length = FormatMessageW(FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM, nullptr,
                                        errorCode, 0, reinterpret_cast<wchar_t *>(&buffer), 0, nullptr);
    const UniqueLocalMemory owner(buffer);
    if (length == 0 || !buffer)
        return {};
    std::wstring text(buffer);
    if (!text.empty() && text.back() == L'\n')
        text.pop_back();
    if (!text.empty() && text.back() == L'\r')
        text.pop_back();
    return text;
}
