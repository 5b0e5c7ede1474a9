// One logged-in control connection, good for one transfer.
#pragma once

#include "update/ftp/FtpTypes.h"
#include "update/ftp/Sockets.h"
#include "update/ftp/TimeLimits.h"

struct FtpSession {
    explicit FtpSession(const TimeLimits &limits) : time(limits) {}

    SocketLibrary library; // outlives the socket
    UniqueSocket control;
    std::string localAddress; // dotted IPv4 of the interface that leads to the server
    std::string serverAddress;
    TimeBudget time;
    bool answers = true; // false once a reply did not come: nothing more is waited for
};

// After a failure the session is not connected.
FtpResult openSession(const FtpServer &server, FtpSession &session);

// Says good-bye and closes: always Done. A server that no longer answers is not waited for.
FtpResult closeSession(FtpSession &session);
