// What the simulated headset and the program's folder hold: read from outside, while the program runs or
// after it.
#pragma once

#include "device/PropertyBlocks.h"
#include "helpers/Registry.h"
#include "program/Panel.h"

#include <cstring>
#include <filesystem>
#include <fstream>

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

    // The curve file; a count of -1 when it does not have its exact size.
    static EqCurveStore curves() {
        EqCurveStore store{};
        const std::filesystem::path path = Panel::folder() + L"\\config\\eqs.bin";
        std::error_code error;
        if (std::filesystem::file_size(path, error) != sizeof store || error) {
            store.count = -1;
            return store;
        }
        std::ifstream(path, std::ios::binary).read(reinterpret_cast<char *>(&store), sizeof store);
        return store;
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
