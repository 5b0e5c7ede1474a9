// The interface language: 0 Simplified Chinese, 1 English. A stored value from 128 to 255 becomes negative
// and loads no translation. One object, owned by the main window; pages and the update keep a reference to
// it.
#pragma once

#include <atomic>
#include <cstdint>

struct InterfaceLanguage {
    std::atomic<int8_t> code{0}; // also read by the download thread

    bool isEnglish() const { return code != 0; }
};
