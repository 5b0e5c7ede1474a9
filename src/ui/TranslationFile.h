// Looks through a .qm file before the toolkit uses it, since QTranslator follows the lengths inside without
// checking them: a damaged file could hang the program or take it down at the first text.
#pragma once

#include <cstddef>

// True when every text that the file can be asked for lies inside it. Files with sections that our build does
// not make (dependencies on other files, the context table of compressed files) count as unsound.
bool isSoundTranslationFile(const char *bytes, size_t byteCount);
