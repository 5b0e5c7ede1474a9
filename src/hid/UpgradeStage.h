// What the upgrade page shows for each stage that a firmware upgrade reports.
#pragma once

#include <cstdint>
#include <optional>

struct UpgradeDisplay {
    const char *status;              // ASCII; null leaves the status as it is
    std::optional<int32_t> progress; // percent; none leaves the bar as it is
};

// Stages: 0 start, 1 opening, 2 entering upgrade mode, 3 writing, 4 progress (value is the percentage),
// 5 waiting for the end status, 6 done; any other clears the status.
UpgradeDisplay upgradeDisplay(uint32_t stage, int32_t value);
