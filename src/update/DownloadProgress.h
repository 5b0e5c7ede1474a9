// What a download's progress report shows.
#pragma once

#include "update/UpdateTexts.h"

#include <cstdint>
#include <optional>

struct ProgressDisplay {
    BilingualText text;
    std::optional<int32_t> bar; // nothing: the bar stays as it is
};

ProgressDisplay progressDisplay(uint32_t stage, int32_t value);
