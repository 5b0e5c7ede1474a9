// normal.exe: stands in for the headset's microphone-monitoring helper. It does nothing but wait to be
// stopped.
#include <windows.h>

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int) {
    Sleep(INFINITE);
    return 0;
}
