#include "simulator/Tasks.h"

#include "helpers/WinHandles.h"
#include "simulator/ExecutablePath.h"

#include <string>
#include <tlhelp32.h>
#include <vector>

namespace {

constexpr DWORD kEndingTime = 1000; // milliseconds that a stopped process may take to disappear

std::wstring executableFolder() {
    const std::wstring file = executablePath();
    return file.substr(0, file.find_last_of(L"\\/"));
}

bool isFile(const std::wstring &path) {
    const DWORD attributes = GetFileAttributesW(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && !(attributes & FILE_ATTRIBUTE_DIRECTORY);
}

// Empty when the file is in neither place.
std::wstring findProgram(const wchar_t *fileName, const wchar_t *folder) {
    if (folder && *folder) {
        std::wstring path = std::wstring(folder) + L"\\" + fileName;
        if (isFile(path))
            return path;
    }
    const std::wstring path = executableFolder() + L"\\" + fileName;
    return isFile(path) ? path : std::wstring();
}

bool equalIgnoringCase(const wchar_t *a, const wchar_t *b) {
    return CompareStringOrdinal(a, -1, b, -1, TRUE) == CSTR_EQUAL;
}

bool isInThisSession(DWORD processId) {
    DWORD own = 0, other = 0;
    return ProcessIdToSessionId(GetCurrentProcessId(), &own) && ProcessIdToSessionId(processId, &other) &&
           own == other;
}

std::vector<DWORD> findProcesses(const wchar_t *fileName) {
    std::vector<DWORD> found;
    const UniqueFileHandle snapshot(CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0));
    PROCESSENTRY32W entry{};
    entry.dwSize = sizeof entry;
    for (BOOL more = snapshot && Process32FirstW(snapshot.get(), &entry); more;
         more = Process32NextW(snapshot.get(), &entry))
        if (equalIgnoringCase(entry.szExeFile, fileName) && isInThisSession(entry.th32ProcessID))
            found.push_back(entry.th32ProcessID);
    return found;
}

bool endProcess(DWORD processId) {
    const UniqueHandle process(OpenProcess(PROCESS_TERMINATE | SYNCHRONIZE, FALSE, processId));
    if (!process || !TerminateProcess(process.get(), 0))
        return false;
    WaitForSingleObject(process.get(), kEndingTime); // so that it no longer counts as running
    return true;
}

} // namespace

namespace Tasks {

Outcome start(const wchar_t *fileName, const wchar_t *parameters, int32_t show, const wchar_t *folder) {
    if (!fileName || !*fileName)
        return {0, "no file name"};
    const std::wstring program = findProgram(fileName, folder);
    if (program.empty())
        return {0, "no such file"};

    std::wstring commandLine = L"\"" + program + L"\"";
    if (parameters && *parameters)
        commandLine += std::wstring(L" ") + parameters;
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESHOWWINDOW;
    if (show == SW_HIDE)
        startup.dwFlags |= STARTF_FORCEOFFFEEDBACK; // no busy cursor for a program without a window
    startup.wShowWindow = static_cast<WORD>(show);
    PROCESS_INFORMATION created{};
    if (!CreateProcessW(program.c_str(), commandLine.data(), nullptr, nullptr, FALSE, 0, nullptr,
                        folder && *folder ? folder : nullptr, &startup, &created))
        return {0, "cannot be started"};
    const UniqueHandle process(created.hProcess), thread(created.hThread);
    return {1};
}

Outcome stop(const wchar_t *fileName) {
    if (!fileName || !*fileName)
        return {0, "no file name"};
    int32_t stopped = 0;
    for (const DWORD processId : findProcesses(fileName))
        stopped += processId != GetCurrentProcessId() && endProcess(processId);
    return {stopped};
}

Outcome countRunning(const wchar_t *fileName) {
    if (!fileName || !*fileName)
        return {0, "no file name"};
    return {static_cast<int32_t>(findProcesses(fileName).size())};
}

} // namespace Tasks
