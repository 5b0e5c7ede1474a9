// libFuzzer entry: all that reads bytes from outside, under sanitizers. The first byte chooses the reader.
#include "device/EqCurves.h"
#include "pages/equalizer/EqCurveText.h"
#include "update/ftp/FtpReply.h"
#include "update/ServerConfig.h"
#include "update/UpdateInfo.h"
#include "window/language/TranslationFile.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <memory>

namespace {

// How libFuzzer learns that a property does not hold.
void require(bool condition) {
    if (!condition)
        std::abort();
}

void readReply(const std::string &text) {
    parseReplyCode(text);
    isWholeReply(text);
    const int32_t port = parsePassivePort(text);
    require(port >= -2 && port <= 65535);
    parseFileSize(text);
    parseFileTime(text);
    portArgument(text, 4711);
    listsInstaller(updateInformationText(text.data(), text.size()), 4711);
}

void readConfiguration(const std::string &bytes) {
    ServerConfigRecord record{};
    std::copy_n(bytes.begin(), std::min(bytes.size(), record.size()), record.begin());
    const ServerConfig config = getServerConfig(record);
    require(config.server.user.size() <= 32 && config.server.password.size() <= 32);
    makeServerConfig(config, {});
}

// A file image, then what users do with it: an operation, a gain, and which record's name or a new one.
void useCurves(const std::string &bytes) {
    EqCurveStore store{};
    std::memcpy(&store, bytes.data(), std::min(bytes.size(), sizeof store));
    EqCurves::sanitise(store);
    for (size_t at = sizeof store; at + 2 < bytes.size(); at += 3) {
        ExtBlock gains{};
        std::fill(std::begin(gains.gain), std::end(gains.gain), static_cast<int8_t>(bytes[at + 1]));
        const auto choice = static_cast<uint8_t>(bytes[at + 2]);
        const std::u16string name = choice < 128 ? EqCurves::nameOf(store.curve[choice % EqCurves::kCapacity])
                                                 : std::u16string(choice % 40, choice);
        if (bytes[at] % 3 == 0)
            EqCurves::save(store, name, gains, [](const EqCurveStore &) {});
        else if (bytes[at] % 3 == 1)
            EqCurves::remove(store, name);
        else
            EqCurves::recall(store, name, gains);
        require(store.count >= 0 && store.count <= EqCurves::kCapacity);
        require(store.current >= 0 && store.current < EqCurves::kCapacity);
    }
}

// What can be read can be written and read again.
void importCurve(const std::string &text) {
    const EqCurveText::Parsed parsed = EqCurveText::parse(text);
    if (!parsed.gains)
        return;
    ExtBlock block{};
    std::copy(parsed.gains->begin(), parsed.gains->end(), block.gain);
    for (const int gain : *parsed.gains)
        require(gain >= -20 && gain <= 20);
    require(EqCurveText::parse(EqCurveText::graphicEq(block)).gains == parsed.gains);
}

void checkTranslation(const std::string &bytes) {
    // A buffer of its own, so that one byte too far is seen.
    const std::unique_ptr<char[]> copy(new char[bytes.size()]);
    std::copy(bytes.begin(), bytes.end(), copy.get());
    isSoundTranslationFile(copy.get(), bytes.size());
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    if (size == 0)
        return 0;
    void (*const readers[])(const std::string &) = {readReply, readConfiguration, useCurves, checkTranslation,
                                                    importCurve};
    readers[data[0] % std::size(readers)](std::string(data + 1, data + size));
    return 0;
}
