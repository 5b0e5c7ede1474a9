#include "device/EqCurves.h"

#include <algorithm>

namespace EqCurves {

void sanitise(EqCurveStore &store) {
    store.count = std::clamp<int32_t>(store.count, 0, kCapacity);
    store.current = std::clamp<int32_t>(store.current, 0, kCapacity - 1);
}

} // namespace EqCurves
