// How the fuzzing programs tell libFuzzer that a property does not hold.
#pragma once

#include <cstdlib>

inline void require(bool condition) {
    if (!condition)
        std::abort();
}
