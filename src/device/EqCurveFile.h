// The EQ curve file: the 748-byte store image, read once at start-up and written whole after every save and
// delete. A store that cannot be read stays all zero, one that cannot be written keeps its old bytes and
// leaves a log line.
#pragma once

#include "device/PropertyBlocks.h"

#include <string>

namespace EqCurveFile {

// Fills the store with what the file holds, its numbers clamped to their ranges. A missing file is made of
// zeros, a missing folder too.
void load(const std::wstring &path, EqCurveStore &store);

// Replaces the file by the store. The bytes go to a file beside it first, which then takes its place, so that
// a full disk or the end of the process in the middle leaves the old file whole. A missing folder is made.
void save(const std::wstring &path, const EqCurveStore &store);

} // namespace EqCurveFile
