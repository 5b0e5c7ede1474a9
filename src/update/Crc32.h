// The CRC by which installers and the server configuration are recognised: CRC-32 of IEEE 802.3 in its
// reflected form, register initialised to 0xFFFFFFFF and used as it stands, without the usual final
// inversion.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>

constexpr uint32_t kCrcStart = 0xFFFFFFFFu;

// The register after count bytes; pass an earlier result as start to go on with the next piece.
uint32_t crcRegister(const void *bytes, size_t count, uint32_t start = kCrcStart) noexcept;

// Puts the register after the whole file into crc and returns the file's size in bytes; -1 when the file
// cannot be opened, -2 when it is empty or cannot be read (crc is then not set). A copyPath that is not empty
// receives a copy of the bytes; a copy that cannot be written is not an error.
int64_t fileCrc(const std::filesystem::path &path, uint32_t &crc, const std::filesystem::path &copyPath = {});
