// Text of a Windows error code, in the system's language, without the trailing line end; empty when there is
// none.
#pragma once

#include <string>
#include <windows.h>

std::wstring SystemMessage(DWORD errorCode);
