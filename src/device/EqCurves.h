// Operations on the EQ curve store, on plain values. See EqCurveStore in PropertyBlocks.h for the file image.
#pragma once

#include "device/PropertyBlocks.h"

#include <string>

namespace EqCurves {

constexpr int kCapacity = 10;
constexpr int kNameUnits = 31;

// Clamps count to 0..10 and current to 0..9, so that no later step reads outside the record.
void sanitise(EqCurveStore &store);

} // namespace EqCurves
