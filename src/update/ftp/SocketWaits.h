// Operations on blocking sockets that end within a time. One that does not fails with WSAETIMEDOUT as
// WSAGetLastError's code.
#pragma once

#include "update/ftp/Sockets.h"
#include "update/ftp/TimeLimits.h"

#include <functional>
#include <string_view>

constexpr size_t kChunkSize = 65536; // of a file's bytes, what is sent or received at once

// Whether a receive or an accept would return at once: there are bytes or a caller, or the connection has
// ended.
bool waitReadable(SOCKET socket, std::chrono::milliseconds limit);

bool connectWithin(SOCKET socket, const sockaddr_in &address, std::chrono::milliseconds limit);

UniqueSocket acceptWithin(SOCKET listener, std::chrono::milliseconds limit);

// The number of bytes that one receive brought, 0 at the end of the connection, or SOCKET_ERROR.
int receiveWithin(SOCKET socket, void *bytes, size_t limitBytes, std::chrono::milliseconds limit);

// Hands all that comes to take, at most a chunk at once; false when the connection ends with an error.
bool receiveAll(SOCKET socket, const TimeBudget &time, const std::function<void(std::string_view)> &take);

// How many of the bytes were sent, at least one, or SOCKET_ERROR.
int sendWithin(SOCKET socket, std::string_view bytes, std::chrono::milliseconds limit);
