#include "simulator/Journal.h"

#include "helpers/AppendToFile.h"
#include "simulator/Knobs.h"

#include <cstdio>

namespace {

constexpr LONGLONG kLargestFile = 4 << 20;

std::wstring defaultFolder() {
    wchar_t folder[MAX_PATH] = L"";
    const DWORD length = GetEnvironmentVariableW(L"LOCALAPPDATA", folder, MAX_PATH);
    return length > 0 && length < MAX_PATH ? std::wstring(folder, length) + L"\\QorSoundKit Simulator"
                                           : std::wstring();
}

bool hasGrownTooLarge(const std::wstring &file) {
    WIN32_FILE_ATTRIBUTE_DATA data{};
    if (!GetFileAttributesExW(file.c_str(), GetFileExInfoStandard, &data))
        return false;
    return data.nFileSizeHigh != 0 || data.nFileSizeLow >= kLargestFile;
}

std::string prefix() {
    SYSTEMTIME now{};
    GetLocalTime(&now);
    char text[80];
    std::snprintf(text, sizeof text, "%04u-%02u-%02u %02u:%02u:%02u.%03u %lu %lu ", now.wYear, now.wMonth,
                  now.wDay, now.wHour, now.wMinute, now.wSecond, now.wMilliseconds, GetCurrentProcessId(),
                  GetCurrentThreadId());
    return text;
}

} // namespace

std::wstring Journal::path() {
    std::wstring chosen = Knobs::text(L"JournalPath");
    if (!chosen.empty())
        return chosen;
    const std::wstring folder = defaultFolder();
    if (folder.empty())
        return {};
    CreateDirectoryW(folder.c_str(), nullptr);
    return folder + L"\\journal.txt";
}

void Journal::append(const std::string &call) noexcept {
    try {
        const std::wstring file = path();
        if (file.empty())
            return;
        if (hasGrownTooLarge(file))
            MoveFileExW(file.c_str(), (file + L".old").c_str(), MOVEFILE_REPLACE_EXISTING);
        appendToFile(file, prefix() + call + "\n");
    } catch (...) { // out of memory: the call itself matters more than its line
    }
}
