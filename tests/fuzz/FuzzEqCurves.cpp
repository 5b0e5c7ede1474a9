// libFuzzer entry: the curve file. The first 748 bytes are its image, what follows is a sequence of
// operations that users do: an operation byte, a gain byte, a name's length, its units.
#include "device/EqCurves.h"
#include "fuzz/Require.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <string>

namespace {

class Input {
public:
    Input(const uint8_t *data, size_t size) : next_(data), end_(data + size) {}

    bool atEnd() const { return next_ == end_; }
    uint8_t byte() { return atEnd() ? uint8_t{0} : *next_++; }

    void fill(void *target, size_t size) {
        const size_t count = std::min(size, static_cast<size_t>(end_ - next_));
        if (count > 0)
            std::memcpy(target, next_, count);
        next_ += count;
    }

    // Half of the names are those of records, so that operations find something.
    std::u16string name(const EqCurveStore &store) {
        const uint8_t choice = byte();
        if (choice < 128)
            return EqCurves::nameOf(store.curve[choice % EqCurves::kCapacity]);
        std::u16string units(choice % 40, u'\0');
        fill(units.data(), units.size() * sizeof(char16_t));
        units.resize(std::min(units.find(u'\0'), units.size())); // a combo box has no NUL in its text
        return units;
    }

private:
    const uint8_t *next_, *end_;
};

void requireInRange(const EqCurveStore &store) {
    require(store.count >= 0 && store.count <= EqCurves::kCapacity);
    require(store.current >= 0 && store.current < EqCurves::kCapacity);
}

bool same(const EqCurveStore &left, const EqCurveStore &right) {
    return std::memcmp(&left, &right, sizeof left) == 0;
}

void save(EqCurveStore &store, const std::u16string &name, const ExtBlock &gains) {
    const EqCurveStore before = store;
    EqCurveStore written{};
    int writes = 0;
    const EqCurves::SaveResult result = EqCurves::save(store, name, gains, [&](const EqCurveStore &image) {
        written = image;
        ++writes;
    });
    if (result == EqCurves::SaveResult::Full) {
        require(writes == 0 && same(store, before) && store.count == EqCurves::kCapacity);
        return;
    }
    const bool added = result == EqCurves::SaveResult::Added;
    require(writes == 1 && written.count == before.count && store.count == before.count + (added ? 1 : 0));
    // It can be found, also by a name that was cut.
    ExtBlock recalled{};
    EqCurveStore copy = store;
    require(EqCurves::recall(copy, name, recalled) && copy.current == store.current);
    require(std::memcmp(recalled.gain, gains.gain, sizeof gains.gain) == 0);
}

void remove(EqCurveStore &store, const std::u16string &name) {
    const EqCurveStore before = store;
    const std::optional<int> found = EqCurves::find(before, name);
    require(EqCurves::remove(store, name) == found.has_value());
    if (!found) {
        require(same(store, before));
        return;
    }
    require(store.count == before.count - 1);
    const auto index = static_cast<size_t>(*found), left = static_cast<size_t>(store.count);
    require(std::memcmp(store.curve, before.curve, index * sizeof(EqCurve)) == 0);
    require(std::memcmp(store.curve + index, before.curve + index + 1, (left - index) * sizeof(EqCurve)) ==
            0);
}

void recall(EqCurveStore &store, const std::u16string &name) {
    const EqCurveStore before = store;
    ExtBlock gains{};
    const std::optional<int> found = EqCurves::find(store, name);
    require(EqCurves::recall(store, name, gains) == found.has_value());
    require(store.current == found.value_or(before.current) && store.count == before.count);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    Input input(data, size);
    EqCurveStore store{};
    input.fill(&store, sizeof store);
    EqCurves::sanitise(store);
    requireInRange(store);
    EqCurveStore again = store;
    EqCurves::sanitise(again);
    require(same(store, again));
    while (!input.atEnd()) {
        const uint8_t operation = input.byte();
        ExtBlock gains{};
        std::fill(std::begin(gains.gain), std::end(gains.gain), static_cast<int8_t>(input.byte()));
        const std::u16string name = input.name(store);
        switch (operation % 3) {
        case 0:
            save(store, name, gains);
            break;
        case 1:
            remove(store, name);
            break;
        default:
            recall(store, name);
        }
        requireInRange(store);
    }
    return 0;
}
