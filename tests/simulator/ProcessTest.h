#pragma once

// What the test program does as a second process; the argument follows, the exit code is the answer.
constexpr wchar_t kClaimOption[] = L"--claim"; // a mutex name: whether somebody holds it
constexpr wchar_t kStopOption[] = L"--stop";   // an executable's name: stops it and ends with kStillRunning

constexpr int kStillRunning = 7;
