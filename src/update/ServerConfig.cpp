#include "update/ServerConfig.h"

#include "update/Crc32.h"

#include <cstdio>
#include <cstring>
#include <fstream>
#include <stdexcept>

namespace {

constexpr size_t kKeySize = 8;
constexpr size_t kAddress = 8, kPort = 12, kReserved = 16;
constexpr size_t kCheck = 340;

struct TextField {
    const char *name;
    size_t offset, size;
};
constexpr TextField kUser{"user", 20, 32}, kPassword{"password", 52, 32}, kFolder{"folder", 84, 256};

// Its own inverse.
void scramble(ServerConfigRecord &record) {
    for (size_t i = 0; kKeySize + i < kCheck; ++i)
        record[kKeySize + i] ^= static_cast<uint8_t>(i ^ record[i % kKeySize]);
}

uint32_t readNumber(const ServerConfigRecord &record, size_t offset) {
    uint32_t number = 0;
    for (size_t i = 0; i < 4; ++i)
        number |= uint32_t{record[offset + i]} << (8 * i);
    return number;
}

void writeNumber(ServerConfigRecord &record, size_t offset, uint32_t number) {
    for (size_t i = 0; i < 4; ++i)
        record[offset + i] = static_cast<uint8_t>(number >> (8 * i));
}

std::string readText(const ServerConfigRecord &record, const TextField &field) {
    const auto *start = reinterpret_cast<const char *>(record.data() + field.offset);
    return std::string(start, strnlen(start, field.size));
}

void writeText(ServerConfigRecord &record, const TextField &field, const std::string &text) {
    if (text.size() > field.size || text.find('\0') != std::string::npos)
        throw std::invalid_argument(std::string(field.name) + " does not fit in " +
                                    std::to_string(field.size) + " bytes");
    std::memcpy(record.data() + field.offset, text.data(), text.size());
}

std::string readAddress(const ServerConfigRecord &record) {
    char text[16];
    std::snprintf(text, sizeof text, "%d.%d.%d.%d", record[kAddress], record[kAddress + 1],
                  record[kAddress + 2], record[kAddress + 3]);
    return text;
}

void writeAddress(ServerConfigRecord &record, const std::string &address) {
    unsigned number[4];
    char excess;
    const int count = std::sscanf(address.c_str(), "%3u.%3u.%3u.%3u%c", &number[0], &number[1], &number[2],
                                  &number[3], &excess);
    for (size_t i = 0; i < 4; ++i) {
        if (count != 4 || number[i] > 255)
            throw std::invalid_argument("address \"" + address + "\" is not a dotted IPv4 address");
        record[kAddress + i] = static_cast<uint8_t>(number[i]);
    }
}

} // namespace

int32_t loadServerConfig(const std::filesystem::path &path, ServerConfigRecord &record) {
    std::ifstream file(path, std::ios::binary);
    if (!file)
        return -1;
    file.read(reinterpret_cast<char *>(record.data()), static_cast<std::streamsize>(record.size()));
    if (!file || file.peek() != std::ifstream::traits_type::eof())
        return -2;
    if (crcRegister(record.data(), record.size()) != 0)
        return -1;
    scramble(record);
    return 1;
}

ServerConfig getServerConfig(const ServerConfigRecord &record) {
    ServerConfig config;
    config.server.address = readAddress(record);
    config.server.port = readNumber(record, kPort);
    config.server.user = readText(record, kUser);
    config.server.password = readText(record, kPassword);
    config.reserved = readNumber(record, kReserved);
    config.folder = readText(record, kFolder);
    return config;
}

ServerConfigRecord makeServerConfig(const ServerConfig &config, const std::array<uint8_t, 8> &key) {
    ServerConfigRecord record{};
    std::memcpy(record.data(), key.data(), key.size());
    writeAddress(record, config.server.address);
    writeNumber(record, kPort, config.server.port);
    writeNumber(record, kReserved, config.reserved);
    writeText(record, kUser, config.server.user);
    writeText(record, kPassword, config.server.password);
    writeText(record, kFolder, config.folder);
    scramble(record);
    writeNumber(record, kCheck, crcRegister(record.data(), kCheck));
    return record;
}
