// Operations on the EQ curve store, on plain values. See EqCurveStore in PropertyBlocks.h for the file image.
// Names are compared by their UTF-16 units; a longer one is cut to what a record holds.
#pragma once

#include "device/PropertyBlocks.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace EqCurves {

constexpr int kCapacity = 10;
constexpr int kNameUnits = 31;

// Clamps count to 0..10 and current to 0..9, so that no later step reads outside the record, and every gain
// to what a slider can show.
void sanitise(EqCurveStore &store);

// At most kNameUnits units, also of a record whose name has lost its end.
std::u16string nameOf(const EqCurve &curve);

// Index of the first counted record of that name.
std::optional<int> find(const EqCurveStore &store, std::u16string_view name);

// Index of a counted record with these gains, the current one before others.
std::optional<int> findGains(const EqCurveStore &store, const ExtBlock &gains);

using WriteStore = std::function<void(const EqCurveStore &)>;

enum class SaveResult { Replaced, Added, Full };

// Stores the gains under the name, makes that record the current one and hands the store to `write`. A new
// record is written before it is counted: the image on disk holds the record and the old count until the next
// write. Full: nothing changes, nothing is written.
SaveResult save(EqCurveStore &store, std::u16string_view name, const ExtBlock &gains,
                const WriteStore &write);

// Removes the record of that name, closing the gap; false when there is none. Writes nothing.
bool remove(EqCurveStore &store, std::u16string_view name);

// Makes the record of that name the current one and copies its gains; false when there is none.
bool recall(EqCurveStore &store, std::u16string_view name, ExtBlock &gains);

} // namespace EqCurves
