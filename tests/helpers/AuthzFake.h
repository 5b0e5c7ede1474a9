#pragma once

#include <windows.h>

struct AuthzFake {
    enum Step { None, Manager, Context, Check };
    Step failAt = None;
    int open = 0; // handles given out and not yet freed
    DWORD managerFlags = 0;
    DWORD subAuthority = 0;
    DWORD desired = 0;
};

extern AuthzFake authzFake;
