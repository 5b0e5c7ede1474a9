// What the simulated headset holds: read from outside, while the program runs or after it.
#pragma once

#include "device/PropertyBlocks.h"
#include "helpers/Registry.h"

#include <cstring>

struct StoredSettings {
    SystemHead system{};
    SoundBlock sound{};
    ExtBlock extension{};

    static StoredSettings read() {
        StoredSettings stored;
        readBlock(L"SystemHead", &stored.system, sizeof stored.system);
        readBlock(L"SoundBlock", &stored.sound, sizeof stored.sound);
        readBlock(L"ExtBlock", &stored.extension, sizeof stored.extension);
        return stored;
    }

private:
    // A block that was never written stays zero.
    static void readBlock(const wchar_t *name, void *block, size_t size) {
        const std::wstring key = L"HKEY_CURRENT_USER\\Software\\QorSoundKit Simulator";
        if (!Registry::ValueExists(key, name))
            return;
        const std::vector<uint8_t> bytes = Registry::ReadBinaryValue(key, name);
        if (bytes.size() == size)
            std::memcpy(block, bytes.data(), size);
    }
};
