// Transfers over a data connection that the client makes (PASV). All block until the transfer has ended;
// progress is reported on the calling thread.
#pragma once

#include "update/ftp/DownloadBuffer.h"
#include "update/ftp/FtpProgress.h"
#include "update/ftp/FtpSession.h"

enum class TransferResult : int32_t {
    Done = 1,
    PassiveRefused = -5,
    PortUnusable = -6,
    CommandRefused = -7,
    DataNotConnected = -8,
    DataLost = -9,
    NotConfirmed = -10,
};

// Fills the buffer. Bytes that the server does not send stay zero, bytes beyond the buffer's size are
// dropped.
TransferResult retrievePassive(FtpSession &session, const std::string &remotePath, DownloadBuffer &buffer,
                               const FtpProgress &progress);
TransferResult uploadPassive(FtpSession &session, const void *bytes, size_t count,
                             const std::string &remotePath, const FtpProgress &progress);
// The server's own listing text; an empty path lists the current folder.
TransferResult listPassive(FtpSession &session, const std::string &remotePath, std::string &listing);
