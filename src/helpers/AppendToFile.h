// Log files that several processes append to.
#pragma once

#include "helpers/WinHandles.h"

#include <string>

// Appends the bytes in one piece and makes a missing file; waits for no other program. Threads of one process
// must take turns. False when the file cannot be opened or written.
inline bool appendToFile(const std::wstring &path, const std::string &bytes) {
    // Windows writes to the end in one step when FILE_APPEND_DATA is all that is asked for (CreateFile,
    // "Appending to a file"). Wine looks for the end first.
    const UniqueFileHandle file(CreateFileW(path.c_str(), FILE_APPEND_DATA,
                                            FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                            OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
    DWORD written = 0;
    return file && WriteFile(file.get(), bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr) &&
           written == bytes.size();
}
