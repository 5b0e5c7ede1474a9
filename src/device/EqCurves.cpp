#include "device/EqCurves.h"

#include <algorithm>
#include <cstring>

namespace EqCurves {

namespace {

constexpr int8_t kMinGain = -20; // dB
constexpr int8_t kMaxGain = 20;

static_assert(sizeof(EqCurve::gain) == sizeof(ExtBlock::gain));
static_assert(sizeof(EqCurve::name) == (kNameUnits + 1) * sizeof(char16_t));

std::u16string_view fitting(std::u16string_view name) {
    return name.substr(0, kNameUnits);
}

} // namespace

void sanitise(EqCurveStore &store) {
    store.count = std::clamp<int32_t>(store.count, 0, kCapacity);
    store.current = std::clamp<int32_t>(store.current, 0, kCapacity - 1);
    for (EqCurve &curve : store.curve) {
        for (int8_t &gain : curve.gain)
            gain = std::clamp(gain, kMinGain, kMaxGain);
    }
}

// The image is packed and may lie at an odd address, so names are copied out before they are read as UTF-16.
std::u16string nameOf(const EqCurve &curve) {
    char16_t units[kNameUnits + 1]{};
    std::memcpy(units, curve.name, kNameUnits * sizeof(char16_t));
    return units;
}

std::optional<int> find(const EqCurveStore &store, std::u16string_view name) {
    const std::u16string_view wanted = fitting(name);
    for (int i = 0; i < store.count; ++i) {
        if (nameOf(store.curve[i]) == wanted)
            return i;
    }
    return std::nullopt;
}

std::optional<int> findGains(const EqCurveStore &store, const ExtBlock &gains) {
    const auto holds = [&](int i) {
        return i < store.count && std::memcmp(store.curve[i].gain, gains.gain, sizeof gains.gain) == 0;
    };
    if (holds(store.current))
        return store.current;
    for (int i = 0; i < store.count; ++i) {
        if (holds(i))
            return i;
    }
    return std::nullopt;
}

SaveResult save(EqCurveStore &store, std::u16string_view name, const ExtBlock &gains,
                const WriteStore &write) {
    const std::optional<int> found = find(store, name);
    if (!found && store.count >= kCapacity) {
        store.count = kCapacity;
        return SaveResult::Full;
    }
    const int index = found ? *found : store.count;
    EqCurve &record = store.curve[index];
    if (!found) {
        const std::u16string_view kept = fitting(name);
        record = {};
        std::memcpy(record.name, kept.data(), kept.size() * sizeof(char16_t));
    }
    store.current = index;
    std::memcpy(record.gain, gains.gain, sizeof record.gain);
    write(store);
    if (found)
        return SaveResult::Replaced;
    store.count += 1;
    return SaveResult::Added;
}

bool remove(EqCurveStore &store, std::u16string_view name) {
    const std::optional<int> found = find(store, name);
    if (!found)
        return false;
    std::copy(store.curve + *found + 1, store.curve + kCapacity, store.curve + *found);
    store.curve[kCapacity - 1] = {};
    store.count -= 1;
    if (store.current >= store.count)
        store.current -= 1;
    if (store.count < 1)
        store.current = 0;
    return true;
}

bool recall(EqCurveStore &store, std::u16string_view name, ExtBlock &gains) {
    const std::optional<int> found = find(store, name);
    if (!found)
        return false;
    store.current = *found;
    std::memcpy(gains.gain, store.curve[*found].gain, sizeof gains.gain);
    return true;
}

} // namespace EqCurves
