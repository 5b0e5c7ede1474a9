// One logged-in control connection, good for one transfer.
#pragma once

#include "update/ftp/FtpServer.h"
#include "update/ftp/Sockets.h"
#include "update/ftp/TimeLimits.h"

enum class SessionResult : int32_t {
    Open = 1,
    NoSockets = -1,      // Windows Sockets do not start
    NoLocalAddress = -2, // no interface leads to the server
    NotConnected = -3,
    NotWelcome = -4, // the greeting is of another class than 2
    LoginRefused = -5,
};

struct FtpSession {
    explicit FtpSession(const TimeLimits &limits) : time(limits) {}

    SocketLibrary library; // outlives the socket
    UniqueSocket control;
    std::string localAddress; // dotted IPv4 of the interface that leads to the server
    std::string serverAddress;
    TimeBudget time;
    bool answers = true; // false once a reply did not come: nothing more is waited for
};

// After a failure the session holds nothing.
SessionResult openSession(const FtpServer &server, FtpSession &session);

// Says good-bye and closes: always 1. A server that no longer answers is not waited for.
int32_t closeSession(FtpSession &session);
