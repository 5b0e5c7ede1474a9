// The control connection of an FTP session (RFC 959), IPv4 only. All calls block, each send and receive for
// the socket's time-out at most, and print a diagnostic before they report a failure. Windows Sockets must be
// started.
#pragma once

#include "update/FtpReply.h"
#include "update/FtpServer.h"
#include "update/Sockets.h"

// An unconnected or refused socket is empty.
UniqueSocket connectTcp(const std::string &serverIp, uint32_t port, uint32_t timeoutMs = kFtpTimeoutMs);

// Sends the command, if there is one, and takes one receive as the reply: a second line, or the rest of a
// reply in pieces, is the reply to the next command. An empty command reads the greeting or a transfer's
// final reply. Code 0 is a failure.
FtpReply sendCommand(SOCKET control, const std::string &command);

bool login(SOCKET control, const std::string &user, const std::string &password);
bool setBinaryType(SOCKET control);

// -1 on failure, which a negative size or one from 2^31 on is as well.
int64_t getFileSize(SOCKET control, const std::string &remotePath);

// "2024-05-01 13:45:00"; empty on failure.
std::string getFileTime(SOCKET control, const std::string &remotePath);
