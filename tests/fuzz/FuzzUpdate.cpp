// libFuzzer entry: everything that the update reads from a server or a file, on any bytes. The first byte
// chooses the reader.
#include "fuzz/Require.h"
#include "update/DownloadBuffer.h"
#include "update/FtpReply.h"
#include "update/ServerConfig.h"
#include "update/UpdateInfo.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <unistd.h>

namespace {

void readReply(const std::string &text) {
    parseReplyCode(text);
    isWholeReply(text);
    const int32_t port = parsePassivePort(text);
    require(port >= -2 && port <= 65535);
    const auto size = parseFileSize(text);
    require(!size || (*size >= 0 && *size <= INT32_MAX));
    const std::string time = parseFileTime(text);
    require(time.empty() || time.size() == 19);
    portArgument(text, 4711);
    listsInstaller(updateInformationText(text.data(), text.size()), 4711);
}

int32_t load(const void *bytes, size_t size, ServerConfigRecord &record) {
    static const std::string path = "configuration." + std::to_string(getpid());
    std::ofstream(path, std::ios::binary | std::ios::trunc)
        .write(static_cast<const char *>(bytes), static_cast<std::streamsize>(size));
    const int32_t result = loadServerConfig(path, record);
    std::remove(path.c_str());
    return result;
}

void readConfiguration(const std::string &bytes) {
    ServerConfigRecord record{};
    const int32_t result = load(bytes.data(), bytes.size(), record);
    require(bytes.size() == record.size() ? result == 1 || result == -1 : result == -2);

    std::copy_n(bytes.begin(), std::min(bytes.size(), record.size()), record.begin());
    const ServerConfig config = getServerConfig(record);
    require(config.server.user.size() <= 32 && config.server.password.size() <= 32 &&
            config.folder.size() <= 256);

    std::array<uint8_t, 8> key{};
    std::copy_n(record.begin(), key.size(), key.begin());
    const ServerConfigRecord stored = makeServerConfig(config, key);
    require(load(stored.data(), stored.size(), record) == 1);
    const ServerConfig again = getServerConfig(record);
    require(again.server.address == config.server.address && again.server.port == config.server.port &&
            again.server.user == config.server.user && again.server.password == config.server.password &&
            again.reserved == config.reserved && again.folder == config.folder);
}

void receive(const std::string &bytes) {
    uint64_t numbers[2] = {};
    std::memcpy(numbers, bytes.data(), std::min(bytes.size(), sizeof numbers));
    progressPercent(numbers[0], numbers[1]);
    DownloadBuffer buffer;
    const size_t size = numbers[0] % 300;
    require(buffer.allocate(size));
    for (size_t at = 0; at < std::min(size, bytes.size());) {
        const DownloadBuffer::Room room = buffer.room(50);
        const size_t count = std::min(room.size, bytes.size() - at);
        std::memcpy(room.start, bytes.data() + at, count);
        buffer.fill(count);
        at += count;
    }
    require(bytes.size() < size || buffer.room(50).size == 0);
    require(std::memcmp(buffer.data(), bytes.data(), std::min(size, bytes.size())) == 0);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    if (size == 0)
        return 0;
    const std::string bytes(reinterpret_cast<const char *>(data) + 1, size - 1);
    void (*const readers[])(const std::string &) = {readReply, readConfiguration, receive};
    readers[data[0] % std::size(readers)](bytes);
    return 0;
}
