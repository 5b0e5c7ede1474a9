#pragma once

constexpr wchar_t kClaimOption[] = L"--claim"; // makes the test program the second process
