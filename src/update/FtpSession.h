// One logged-in control connection, good for one transfer.
#pragma once

#include "update/FtpServer.h"
#include "update/Sockets.h"

struct FtpSession {
    SocketLibrary library; // outlives the socket
    UniqueSocket control;
    std::string localAddress; // dotted IPv4 of the interface that routes to the server
    std::string serverAddress;
    uint32_t timeoutMs = kFtpTimeoutMs;
};

// 1; -1 no Windows Sockets, -2 no local address, -3 no connection, -4 greeting is no welcome, -5 login
// refused. After a failure the session holds nothing.
int32_t openSession(const FtpServer &server, FtpSession &session);

// Says good-bye and closes: always 1.
int32_t closeSession(FtpSession &session);
