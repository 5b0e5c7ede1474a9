#include "simulator/Instance.h"

#include "helpers/WinHandles.h"
#include "simulator/ExecutablePath.h"
#include "simulator/Knobs.h"

#include <shellapi.h>
#include <string>

namespace {

bool tokenIsElevated() {
    UniqueHandle token;
    TOKEN_ELEVATION elevation{};
    DWORD size = sizeof elevation;
    return OpenProcessToken(GetCurrentProcess(), TOKEN_QUERY, token.put()) &&
           GetTokenInformation(token.get(), TokenElevation, &elevation, sizeof elevation, &size) &&
           elevation.TokenIsElevated != 0;
}

} // namespace

namespace Instance {

Outcome claimName(const wchar_t *mutexName) {
    if (!mutexName || !*mutexName)
        return {0, "no name"};
    const HANDLE mutex =
        CreateMutexW(nullptr, FALSE, mutexName); // closed by the end of the process, on purpose
    const DWORD error = GetLastError();
    // A name held by an account that does not share it cannot be opened, but it is held.
    const bool held = mutex ? error == ERROR_ALREADY_EXISTS : error == ERROR_ACCESS_DENIED;
    return {held ? 1 : 0, mutex || held ? nullptr : "the name cannot be taken"};
}

Outcome isElevated() {
    const auto forced = Knobs::number(L"ForceElevated");
    if (forced)
        return {*forced != 0, "by ForceElevated"};
    return {tokenIsElevated()};
}

Outcome restartElevated() {
    if (const auto forced = Knobs::number(L"RestartResult"))
        return {static_cast<int32_t>(*forced), "by RestartResult"};
    const std::wstring path = executablePath();
    std::wstring folder(32768, L'\0');
    folder.resize(GetCurrentDirectoryW(static_cast<DWORD>(folder.size()), folder.data()));

    SHELLEXECUTEINFOW execution{};
    execution.cbSize = sizeof execution;
    execution.fMask = SEE_MASK_NOASYNC | SEE_MASK_FLAG_NO_UI; // a refusal is the caller's to tell
    execution.lpVerb = L"runas";
    execution.lpFile = path.c_str();
    execution.lpDirectory = folder.c_str(); // the elevated process would start in the system's folder
    execution.nShow = SW_SHOWNORMAL;
    return {ShellExecuteExW(&execution) ? 1 : 0};
}

} // namespace Instance
