#include "update/ftp/SocketWaits.h"

#include <algorithm>
#include <climits>
#include <vector>

namespace {

using std::chrono::milliseconds;

timeval toTimeval(milliseconds time) {
    return {static_cast<long>(time.count() / 1000), static_cast<long>(time.count() % 1000 * 1000)};
}

bool ended(int ready) {
    if (ready == 0)
        WSASetLastError(WSAETIMEDOUT);
    return ready > 0;
}

bool waitConnected(SOCKET socket, milliseconds limit) {
    fd_set writable, failed; // a connection attempt that failed shows in the second set only
    FD_ZERO(&writable);
    FD_ZERO(&failed);
    FD_SET(socket, &writable);
    FD_SET(socket, &failed);
    timeval time = toTimeval(limit);
    return ended(select(0, nullptr, &writable, &failed, &time));
}

void setBlocking(SOCKET socket, bool blocks) {
    u_long nonBlocking = blocks ? 0 : 1;
    ioctlsocket(socket, static_cast<long>(FIONBIO), &nonBlocking);
}

// Of the socket's next operations. False when there is no time: 0 would stand for no limit.
bool setTimeout(SOCKET socket, int option, milliseconds limit) {
    if (limit.count() <= 0) {
        WSASetLastError(WSAETIMEDOUT);
        return false;
    }
    const auto time = static_cast<DWORD>(limit.count());
    setsockopt(socket, SOL_SOCKET, option, reinterpret_cast<const char *>(&time), sizeof time);
    return true;
}

int asSize(size_t bytes) {
    return static_cast<int>(std::min<size_t>(bytes, INT_MAX));
}

} // namespace

bool waitReadable(SOCKET socket, milliseconds limit) {
    fd_set readable;
    FD_ZERO(&readable);
    FD_SET(socket, &readable);
    timeval time = toTimeval(limit);
    return ended(select(0, &readable, nullptr, nullptr, &time));
}

bool connectWithin(SOCKET socket, const sockaddr_in &address, milliseconds limit) {
    setBlocking(socket, false);
    if (connect(socket, reinterpret_cast<const sockaddr *>(&address), sizeof address) != 0) {
        if (WSAGetLastError() != WSAEWOULDBLOCK || !waitConnected(socket, limit))
            return false;
        int error = 0, size = sizeof error;
        getsockopt(socket, SOL_SOCKET, SO_ERROR, reinterpret_cast<char *>(&error), &size);
        WSASetLastError(error);
        if (error != 0)
            return false;
    }
    setBlocking(socket, true);
    return true;
}

UniqueSocket acceptWithin(SOCKET listener, milliseconds limit) {
    return UniqueSocket(waitReadable(listener, limit) ? accept(listener, nullptr, nullptr) : INVALID_SOCKET);
}

int receiveWithin(SOCKET socket, void *bytes, size_t limitBytes, milliseconds limit) {
    // Not by select: under Wine that takes a reset's error away, and the receive tells of a proper end.
    if (!setTimeout(socket, SO_RCVTIMEO, limit))
        return SOCKET_ERROR;
    return recv(socket, static_cast<char *>(bytes), asSize(limitBytes), 0);
}

bool receiveAll(SOCKET socket, const TimeBudget &time, const std::function<void(std::string_view)> &take) {
    std::vector<char> chunk(kChunkSize);
    int count;
    while ((count = receiveWithin(socket, chunk.data(), chunk.size(), time.nextWait())) > 0)
        take({chunk.data(), static_cast<size_t>(count)});
    return count == 0;
}

int sendWithin(SOCKET socket, std::string_view bytes, milliseconds limit) {
    if (!setTimeout(socket, SO_SNDTIMEO, limit))
        return SOCKET_ERROR;
    return send(socket, bytes.data(), asSize(bytes.size()), 0);
}
