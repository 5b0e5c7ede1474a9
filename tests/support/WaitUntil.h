#pragma once

#include "simulator/WaitUntil.h"

// Gives an input until condition() holds, again every two seconds: what comes while a window is being mapped
// is lost. False when it never holds.
template<typename Input, typename Condition>
bool giveUntil(Input give, Condition condition) {
    for (int attempt = 0; attempt < 15; ++attempt) {
        give();
        if (waitUntil(condition, 2000))
            return true;
    }
    return false;
}
