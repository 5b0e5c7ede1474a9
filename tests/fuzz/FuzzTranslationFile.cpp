// libFuzzer entry: a translation file that is said to be sound is read as Qt reads it, without checks; the
// sanitizers watch.
#include "fuzz/Require.h"
#include "ui/TranslationFile.h"

#include <cstdint>
#include <cstring>
#include <memory>

namespace {

uint32_t number(const uint8_t *bytes) {
    return uint32_t{bytes[0]} << 24 | uint32_t{bytes[1]} << 16 | uint32_t{bytes[2]} << 8 | bytes[3];
}

// Touches what a look-up of the message would touch.
void readMessage(const uint8_t *next) {
    constexpr uint8_t kTranslation = 3, kObsolete = 5, kSourceText = 6, kComment = 8;
    volatile uint8_t touched = 0;
    for (;;) {
        const uint8_t tag = *next++;
        if (tag == kObsolete) {
            next += 4;
            continue;
        }
        if (tag != kTranslation && (tag < kSourceText || tag > kComment))
            return;
        const uint32_t length = number(next);
        next += 4;
        if (tag == kTranslation && length == UINT32_MAX) {
            --next;
            continue;
        }
        if (length > 0)
            touched = static_cast<uint8_t>(touched ^ next[0] ^ next[length - 1]);
        next += length;
    }
}

void readAsQtDoes(const uint8_t *bytes, size_t size) {
    constexpr uint8_t kHashes = 0x42, kMessages = 0x69;
    const uint8_t *hashes = nullptr, *messages = nullptr;
    uint32_t hashBytes = 0;
    for (size_t at = 16; at + 5 <= size;) {
        const uint8_t tag = bytes[at];
        const uint32_t length = number(bytes + at + 1);
        at += 5;
        if (tag == 0 || length == 0)
            break;
        require(length <= size - at);
        if (tag == kHashes) {
            hashes = bytes + at;
            hashBytes = length;
        } else if (tag == kMessages) {
            messages = bytes + at;
        }
        at += length;
    }
    require(hashes && messages);
    for (uint32_t at = 0; at < hashBytes; at += 8)
        readMessage(messages + number(hashes + at + 4));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    // A buffer of its own, so that one byte too far is seen.
    const std::unique_ptr<uint8_t[]> bytes(new uint8_t[size]);
    if (size > 0)
        std::memcpy(bytes.get(), data, size);
    if (isSoundTranslationFile(reinterpret_cast<const char *>(bytes.get()), size))
        readAsQtDoes(bytes.get(), size);
    return 0;
}
