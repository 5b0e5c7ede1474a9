// Transfers over a data connection that the client makes (PASV). All block until the transfer has ended;
// progress is reported on the calling thread.
#pragma once

#include "update/ftp/FtpSession.h"

#include <vector>

// Fills the buffer to the expected size: bytes that the server does not send are zero, those beyond are
// dropped.
FtpResult retrievePassive(FtpSession &session, const std::string &remotePath, std::vector<uint8_t> &buffer,
                          size_t expectedSize, const FtpProgress &progress);
FtpResult uploadPassive(FtpSession &session, const void *bytes, size_t count, const std::string &remotePath,
                        const FtpProgress &progress);
// The server's own listing text; an empty path lists the current folder.
FtpResult listPassive(FtpSession &session, const std::string &remotePath, std::string &listing);
