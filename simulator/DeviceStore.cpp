#include "simulator/DeviceStore.h"

#include "device/PropertyBlocks.h"
#include "simulator/Knobs.h"
#include "simulator/StartImage.h"

#include <cstring>
#include <windows.h>

namespace {

// One part of a block that the journal shows.
struct Range {
    size_t offset, size;
};

// A block type: the value that keeps it and its place in the device information record. Of type 1 the device
// keeps the head alone; the rest of that block is the panel's own copy.
struct BlockKind {
    int32_t type;
    const wchar_t *valueName;
    size_t recordOffset, size;
    Range shown[3];
};

constexpr BlockKind kBlockKinds[] = {
    {1, L"SystemHead", offsetof(DeviceInfo, system), sizeof(SystemHead), {{8, 12}, {20, 8}, {0, 0}}},
    {2, L"SoundBlock", offsetof(DeviceInfo, sound), sizeof(SoundBlock), {{0, 2}, {8, 17}, {33, 2}}},
    {3, L"ExtBlock", offsetof(DeviceInfo, extension), sizeof(ExtBlock), {{0, 10}, {0, 0}, {0, 0}}},
};

const BlockKind *findKind(int32_t type) {
    for (const BlockKind &kind : kBlockKinds)
        if (kind.type == type)
            return &kind;
    return nullptr;
}

} // namespace

namespace DeviceStore {

int32_t deviceCount() {
    return Knobs::signedNumber(L"DeviceCount", 1);
}

Outcome initialise() {
    while (Knobs::number(L"HeldBack", 0) == GetCurrentProcessId())
        Sleep(20);
    return {Knobs::signedNumber(L"InitResult", 0)};
}

Outcome read(int32_t index, void *record) {
    if (!record)
        return {kFailed, "no record"};
    if (index < 0 || index >= deviceCount())
        return {kFailed, "no such device"};
    const int32_t result = Knobs::signedNumber(L"DeviceInfoResult", 0);
    if (result < 0)
        return {result};

    DeviceInfo image = makeStartImage(static_cast<StartImage>(Knobs::number(L"StartImage", 0)));
    for (const BlockKind &kind : kBlockKinds)
        Knobs::readBytes(kind.valueName, reinterpret_cast<uint8_t *>(&image) + kind.recordOffset, kind.size);
    std::memcpy(record, &image, sizeof image);
    return {result};
}

Outcome write(void *record, int32_t type, const void *block) {
    const BlockKind *kind = findKind(type);
    if (!kind)
        return {kFailed, "no such block type"};
    if (!record || !block)
        return {kFailed, record ? "no block" : "no record"};
    if (deviceCount() < 1)
        return {kFailed, "unplugged"};
    if (!Knobs::writeBytes(kind->valueName, block, kind->size))
        return {kFailed, "the registry value cannot be written"};
    std::memcpy(static_cast<uint8_t *>(record) + kind->recordOffset, block, kind->size);
    return {};
}

std::string digest(int32_t type, const void *block) {
    const BlockKind *kind = findKind(type);
    if (!kind || !block)
        return block ? "?" : "null";
    std::string text;
    for (const Range &range : kind->shown) {
        if (range.size == 0)
            continue;
        text += (text.empty() ? "" : "  ") + std::to_string(range.offset) + ": " +
                hexBytes(static_cast<const uint8_t *>(block) + range.offset, range.size);
    }
    return text;
}

} // namespace DeviceStore
