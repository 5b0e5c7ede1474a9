// Transfers over an FTP data connection. All block until the transfer has ended; progress is reported on the
// calling thread. Results: 1, or the negative number of the step that failed.
#pragma once

#include "update/DownloadBuffer.h"
#include "update/FtpSession.h"

// Fetches a whole file over a session of its own. size, when given, receives the size that the server
// announced; bytes that the server does not send stay zero, bytes beyond the size are dropped. Failures leave
// the buffer empty: the codes of openSession, -6 no usable size or no memory for it, -7 binary type refused,
// -9 transfer failed.
int32_t downloadToMemory(const FtpServer &server, const std::string &remotePath, DownloadBuffer &buffer,
                         int64_t *size, const FtpProgress &progress);

// Steps of the passive transfers below.
enum FtpTransferResult : int32_t {
    FtpDone = 1,
    FtpPassiveRefused = -5,
    FtpPassivePortUnusable = -6,
    FtpCommandRefused = -7,
    FtpDataNotConnected = -8,
    FtpDataLost = -9,
    FtpNotConfirmed = -10,
};

int32_t retrievePassive(FtpSession &session, const std::string &remotePath, DownloadBuffer &buffer,
                        const FtpProgress &progress);
int32_t uploadPassive(FtpSession &session, const void *bytes, size_t count, const std::string &remotePath,
                      const FtpProgress &progress);
// The server's own listing text; an empty path lists the current folder.
int32_t listPassive(FtpSession &session, const std::string &remotePath, std::string &listing);

// Fetches into a local file over a connection that the server opens; expectedSize is for the printed progress
// only.
bool downloadActive(FtpSession &session, const std::string &remotePath, const std::string &localPath,
                    int64_t expectedSize);
