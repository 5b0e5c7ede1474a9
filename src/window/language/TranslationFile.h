// Looks through a .qm file before the toolkit uses it, since QTranslator follows the lengths inside without
// checking them: a damaged file could hang the program or take it down at the first text.
#pragma once

#include <cstddef>

// True when every text that the file can be asked for lies inside it. Files that depend on others, which
// QTranslator would load itself, and compressed ones, whose context table need not have an end, count as
// unsound.
bool isSoundTranslationFile(const char *bytes, size_t byteCount);
