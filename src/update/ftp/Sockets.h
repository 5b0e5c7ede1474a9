// Owners of Windows Sockets resources.
#pragma once

#include "helpers/UniqueResource.h"

#include <winsock2.h>
#include <ws2tcpip.h>

struct SocketTraits {
    using Type = SOCKET;
    static Type empty() noexcept { return INVALID_SOCKET; }
    static void release(Type socket) noexcept { closesocket(socket); }
};
using UniqueSocket = UniqueResource<SocketTraits>;

// One WSAStartup with its WSACleanup.
class SocketLibrary {
public:
    SocketLibrary() noexcept {
        WSADATA data;
        error_ = WSAStartup(MAKEWORD(2, 2), &data);
    }
    ~SocketLibrary() {
        if (error_ == 0)
            WSACleanup();
    }
    SocketLibrary(const SocketLibrary &) = delete;
    SocketLibrary &operator=(const SocketLibrary &) = delete;

    int error() const noexcept { return error_; } // 0 when started

private:
    int error_;
};
