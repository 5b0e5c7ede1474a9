// Owners of Windows resources that several folders use.
#pragma once

#include "helpers/UniqueResource.h"

#include <windows.h>

struct HandleTraits { // events, threads, processes, tokens, mutexes: null is empty
    using Type = HANDLE;
    static Type empty() noexcept { return nullptr; }
    static void release(Type handle) noexcept { CloseHandle(handle); }
};
using UniqueHandle = UniqueResource<HandleTraits>;

struct FileHandleTraits { // what CreateFile returns: INVALID_HANDLE_VALUE is empty
    using Type = HANDLE;
    static Type empty() noexcept { return INVALID_HANDLE_VALUE; }
    static void release(Type handle) noexcept { CloseHandle(handle); }
};
using UniqueFileHandle = UniqueResource<FileHandleTraits>;

struct RegistryKeyTraits {
    using Type = HKEY;
    static Type empty() noexcept { return nullptr; }
    static void release(Type key) noexcept { RegCloseKey(key); }
};
using UniqueRegistryKey = UniqueResource<RegistryKeyTraits>;

struct LocalMemoryTraits {
    using Type = void *;
    static Type empty() noexcept { return nullptr; }
    static void release(Type memory) noexcept { LocalFree(memory); }
};
using UniqueLocalMemory = UniqueResource<LocalMemoryTraits>;

struct SidTraits { // from AllocateAndInitializeSid
    using Type = PSID;
    static Type empty() noexcept { return nullptr; }
    static void release(Type sid) noexcept { FreeSid(sid); }
};
using UniqueSid = UniqueResource<SidTraits>;
