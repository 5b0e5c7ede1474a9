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
    SocketLibrary() noexcept = default;
    SocketLibrary(const SocketLibrary &) = delete;
    SocketLibrary &operator=(const SocketLibrary &) = delete;
    ~SocketLibrary() { stop(); }

    // 0, or the error code.
    int start() noexcept {
        stop();
        WSADATA data;
        const int error = WSAStartup(MAKEWORD(2, 2), &data);
        started_ = error == 0;
        return error;
    }
    void stop() noexcept {
        if (started_)
            WSACleanup();
        started_ = false;
    }

private:
    bool started_ = false;
};
