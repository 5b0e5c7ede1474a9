#include "window/language/TranslationFile.h"

#include <cstdint>
#include <string_view>

// The format, from qtbase's qtranslator.cpp: 16 magic bytes, then sections of a tag, a 32-bit length and that
// many bytes, all numbers big-endian. "Hashes" holds pairs of a hash and an offset into "Messages", where a
// message is a sequence of fields, each with a tag and mostly a length, closed by an end tag.

namespace {

constexpr std::string_view kMagic("\x3c\xb8\x64\x18\xca\xef\x9c\x95\xcd\x21\x1c\xbf\x60\xa1\xbd\xdd", 16);
constexpr size_t kSectionHead = 5; // QTranslator ignores a shorter rest
constexpr uint32_t kNoText = 0xFFFFFFFF;

enum SectionTag : uint8_t { kContexts = 0x2f, kHashes = 0x42, kMessages = 0x69, kDependencies = 0x96 };
enum FieldTag : uint8_t { kTranslation = 3, kObsolete = 5, kSourceText = 6, kContext = 7, kComment = 8 };

// Takes numbers and stretches of bytes from the front; after a request for more than is left, failed() stays
// true.
class Reader {
public:
    explicit Reader(std::string_view bytes) : rest_(bytes) {}

    bool failed() const { return failed_; }
    bool atEnd() const { return rest_.empty(); }
    size_t left() const { return rest_.size(); }

    std::string_view take(size_t count) {
        if (count > rest_.size()) {
            failed_ = true;
            count = rest_.size();
        }
        const std::string_view taken = rest_.substr(0, count);
        rest_.remove_prefix(count);
        return taken;
    }

    uint32_t number(size_t byteCount) {
        uint32_t value = 0;
        for (const char byte : take(byteCount))
            value = value << 8 | static_cast<uint8_t>(byte);
        return value;
    }

private:
    std::string_view rest_;
    bool failed_ = false;
};

// QTranslator gives a message up at a tag that it does not know. So it does after the length of a text
// without characters: it goes back by one byte and takes that for a tag.
bool isSoundMessage(std::string_view messages, uint32_t offset) {
    if (offset >= messages.size())
        return false;
    Reader reader(messages.substr(offset));
    for (;;) {
        const uint32_t tag = reader.number(1);
        switch (tag) {
        case kObsolete:
            reader.take(4);
            break;
        case kTranslation:
        case kSourceText:
        case kContext:
        case kComment: {
            const uint32_t length = reader.number(4);
            if (tag == kTranslation && length == kNoText)
                return true;
            reader.take(length);
            break;
        }
        default: // the end tag as well
            return !reader.failed();
        }
        if (reader.failed())
            return false;
    }
}

bool areSoundMessages(std::string_view hashes, std::string_view messages) {
    Reader pairs(hashes);
    while (!pairs.atEnd()) {
        pairs.number(4); // the hash
        if (!isSoundMessage(messages, pairs.number(4)) || pairs.failed())
            return false;
    }
    return !hashes.empty();
}

} // namespace

bool isSoundTranslationFile(const char *bytes, size_t byteCount) {
    Reader file(std::string_view(bytes, byteCount));
    if (file.take(kMagic.size()) != kMagic)
        return false;
    std::string_view hashes;
    std::string_view messages;
    while (file.left() >= kSectionHead) {
        const uint32_t tag = file.number(1);
        const uint32_t length = file.number(4);
        if (tag == 0 || length == 0)
            break;
        const std::string_view section = file.take(length);
        if (file.failed() || tag == kContexts || tag == kDependencies)
            return false;
        if (tag == kHashes)
            hashes = section;
        else if (tag == kMessages)
            messages = section;
    }
    return areSoundMessages(hashes, messages);
}
