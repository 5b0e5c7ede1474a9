#include "hid/UpgradeStage.h"

UpgradeDisplay upgradeDisplay(uint32_t stage, int32_t value) {
    switch (stage) {
    case 0:
        return {"start progressing", 0};
    case 1:
        return {"openning OTA device", {}};
    case 2:
        return {"Entering OTA mode", {}};
    case 3:
        return {"writing flash...", {}};
    case 4:
        return {nullptr, value};
    case 5:
        return {"waiting END status...", {}};
    case 6:
        return {"write flash END ", {}};
    default:
        return {"", {}};
    }
}
