// Transfers over a data connection that the server makes (PORT).
#pragma once

#include "update/ftp/FtpSession.h"

// Fetches into a local file; expectedSize is for the printed progress only.
bool downloadActive(FtpSession &session, const std::string &remotePath, const std::string &localPath,
                    int64_t expectedSize);
