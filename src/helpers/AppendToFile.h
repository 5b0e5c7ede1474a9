// Log files that several threads and processes append to.
#pragma once

#include "helpers/WinHandles.h"

#include <mutex>
#include <string>

// Appends the bytes in one piece and makes a missing file; waits for no other program. False when the file
// cannot be opened or written.
inline bool appendToFile(const std::wstring &path, const std::string &bytes) {
    // Windows writes to the end in one step when FILE_APPEND_DATA is all that is asked for (CreateFile,
    // "Appending to a file"). Wine looks for the end first, so the threads of this process take turns.
    static std::mutex turn;
    const std::lock_guard<std::mutex> lock(turn);
    const UniqueFileHandle file(CreateFileW(path.c_str(), FILE_APPEND_DATA,
                                            FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                            OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
    DWORD written = 0;
    return file && WriteFile(file.get(), bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr) &&
           written == bytes.size();
}
