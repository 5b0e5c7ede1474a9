// A whole file into memory over an FTP session of its own, as the software update needs it.
#pragma once

#include "update/ftp/FtpTypes.h"
#include "update/ftp/TimeLimits.h"

#include <vector>

// Blocks for as long as the limits let it. size, when given, receives the size that the server announced,
// which is the buffer's as well; after a failure the buffer is empty.
FtpResult downloadToMemory(const FtpServer &server, const std::string &remotePath,
                           std::vector<uint8_t> &buffer, int64_t *size, const FtpProgress &progress,
                           const TimeLimits &limits);
