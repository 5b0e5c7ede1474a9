// The control connection of an FTP session (RFC 959), IPv4 only. All calls block within the session's time,
// and print a diagnostic before they report a failure.
#pragma once

#include "update/ftp/FtpReply.h"
#include "update/ftp/FtpSession.h"

// An unconnected or refused socket is empty. Windows Sockets must be started.
UniqueSocket connectTcp(const std::string &serverIp, uint32_t port, const TimeBudget &time);

bool sendLine(FtpSession &session, const std::string &command);

// Sends the command, if there is one, and takes one receive as the reply: a second line, or the rest of a
// reply in pieces, is the reply to the next command. An empty command reads the greeting or a transfer's
// final reply. Code 0 is a failure.
FtpReply sendCommand(FtpSession &session, const std::string &command);

// The next reply by its lines, and nothing of what comes after it.
FtpReply receiveWholeReply(FtpSession &session);

bool login(FtpSession &session, const std::string &user, const std::string &password);
bool setBinaryType(FtpSession &session);

// -1 on failure, which a negative size or one from 2^31 on is as well.
int64_t getFileSize(FtpSession &session, const std::string &remotePath);

// "2024-05-01 13:45:00"; empty on failure.
std::string getFileTime(FtpSession &session, const std::string &remotePath);
