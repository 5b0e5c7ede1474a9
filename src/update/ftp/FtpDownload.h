// A whole file into memory over an FTP session of its own, as the software update needs it.
#pragma once

#include "update/ftp/DownloadBuffer.h"
#include "update/ftp/FtpProgress.h"
#include "update/ftp/FtpServer.h"
#include "update/ftp/TimeLimits.h"

enum class DownloadResult : int32_t {
    Done = 1,
    NoSockets = -1, // -1 to -5: as SessionResult
    NoLocalAddress = -2,
    NotConnected = -3,
    NotWelcome = -4,
    LoginRefused = -5,
    NoSize = -6, // or not that much memory
    BinaryRefused = -7,
    TransferFailed = -9,
};

// Blocks for as long as the limits let it. size, when given, receives the size that the server announced,
// which is the buffer's as well; after a failure the buffer is empty.
DownloadResult downloadToMemory(const FtpServer &server, const std::string &remotePath,
                                DownloadBuffer &buffer, int64_t *size, const FtpProgress &progress,
                                const TimeLimits &limits);
