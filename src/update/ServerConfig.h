// "qor_netcfg.fsc": where the update server is. The installer writes it into the installation folder.
#pragma once

#include "update/ftp/FtpTypes.h"

#include <array>
#include <filesystem>

// Byte offsets: 0 key (8), 8 address (4), 12 port, 16 reserved, 20 user (32), 52 password (32), 84 folder
// (256), 340 CRC register after bytes 0..339. Numbers are little-endian; bytes 8..339 are scrambled with the
// key.
using ServerConfigRecord = std::array<uint8_t, 344>;

struct ServerConfig {
    FtpServer server;
    uint32_t reserved = 0; // kept, not used
    std::string folder;    // on the server
};

// Reads and unscrambles the record: 1; -1 when the file cannot be opened or its CRC is wrong, -2 when it has
// not exactly 344 bytes.
int32_t loadServerConfig(const std::filesystem::path &path, ServerConfigRecord &record);

// The fields of an unscrambled record. A text ends at its first NUL or at the end of its field.
ServerConfig getServerConfig(const ServerConfigRecord &record);

// The record as stored, for the release tools. Throws std::invalid_argument for an address that is not dotted
// IPv4 or a text that does not fit in its field.
ServerConfigRecord makeServerConfig(const ServerConfig &config, const std::array<uint8_t, 8> &key);
