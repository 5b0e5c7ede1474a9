#include "update/FtpTransfers.h"

#include "update/FtpControl.h"

#include <algorithm>
#include <vector>

namespace {

constexpr size_t kChunkSize = 65536; // what is sent and reported at once
// Every receive has a price of its own, whatever it brings. So the system keeps what the server sends
// meanwhile, and one receive takes many chunks.
constexpr int kSystemBufferSize = 4 << 20;
constexpr size_t kReceiveLimit = 16 * kChunkSize;

// Asks for a passive data connection, sends the command that uses it, and connects. 1 or the failed step.
int32_t openPassive(FtpSession &session, const std::string &command, const FtpProgress &progress,
                    UniqueSocket &data) {
    const FtpReply passive = sendCommand(session.control.get(), "PASV");
    if (passive.replyClass() != 2) {
        progress.report(FtpPassiveFailed, -1);
        return FtpPassiveRefused;
    }
    // Only the port is taken from the reply, so that a server cannot send the client to some other machine.
    const int32_t port = parsePassivePort(passive.text);
    if (port < 1) {
        progress.report(FtpPassiveFailed, -1);
        return FtpPassivePortUnusable;
    }
    if (sendCommand(session.control.get(), command).replyClass() != 1) {
        progress.report(FtpDataFailed, -1);
        return FtpCommandRefused;
    }
    data = connectTcp(session.serverAddress, static_cast<uint32_t>(port), session.timeoutMs);
    if (!data) {
        progress.report(FtpDataFailed, -1);
        return FtpDataNotConnected;
    }
    setReceiveBuffer(data.get(), kSystemBufferSize);
    return FtpDone;
}

// Receives to the end of the data connection; false when it ends with an error. The bytes go straight into
// the buffer, those beyond its size nowhere.
bool receiveFile(SOCKET data, DownloadBuffer &buffer, const FtpProgress &progress) {
    std::vector<uint8_t> surplus(kChunkSize);
    uint64_t received = 0;
    for (;;) {
        DownloadBuffer::Room room = buffer.room(kReceiveLimit);
        const bool full = room.size == 0;
        if (full)
            room = {surplus.data(), surplus.size()};
        const int count = recv(data, reinterpret_cast<char *>(room.start), static_cast<int>(room.size), 0);
        if (count <= 0)
            return count == 0;
        auto left = static_cast<size_t>(count);
        if (!full)
            buffer.fill(left);
        while (left > 0) {
            const size_t chunk = std::min(left, kChunkSize);
            received += chunk;
            left -= chunk;
            progress.report(FtpTransfer, progressPercent(received, buffer.size()));
        }
    }
}

// The rest of a transfer, once its data connection has ended.
int32_t finishTransfer(FtpSession &session, bool dataComplete, const FtpProgress &progress) {
    if (!dataComplete) {
        progress.report(FtpTransfer, -1);
        return FtpDataLost;
    }
    const bool confirmed = sendCommand(session.control.get(), {}).replyClass() == 2;
    progress.report(FtpTransfer, confirmed ? 100 : -1);
    return confirmed ? FtpDone : FtpNotConfirmed;
}

} // namespace

int32_t retrievePassive(FtpSession &session, const std::string &remotePath, DownloadBuffer &buffer,
                        const FtpProgress &progress) {
    UniqueSocket data;
    const int32_t opened = openPassive(session, "RETR " + remotePath, progress, data);
    if (opened != FtpDone)
        return opened;
    const bool complete = receiveFile(data.get(), buffer, progress);
    data.reset();
    return finishTransfer(session, complete, progress);
}

int32_t uploadPassive(FtpSession &session, const void *bytes, size_t count, const std::string &remotePath,
                      const FtpProgress &progress) {
    UniqueSocket data;
    const int32_t opened = openPassive(session, "STOR " + remotePath, progress, data);
    if (opened != FtpDone)
        return opened;
    const auto *next = static_cast<const char *>(bytes);
    size_t sent = 0;
    while (sent < count) {
        const int piece =
            send(data.get(), next + sent, static_cast<int>(std::min(count - sent, kChunkSize)), 0);
        if (piece == SOCKET_ERROR)
            break;
        sent += static_cast<size_t>(piece);
        progress.report(FtpTransfer, progressPercent(sent, count));
    }
    data.reset();
    return finishTransfer(session, sent == count, progress);
}

int32_t listPassive(FtpSession &session, const std::string &remotePath, std::string &listing) {
    listing.clear();
    UniqueSocket data;
    const std::string command = remotePath.empty() ? "LIST" : "LIST " + remotePath;
    const int32_t opened = openPassive(session, command, {}, data);
    if (opened != FtpDone)
        return opened;
    std::vector<char> chunk(kChunkSize);
    int count;
    while ((count = recv(data.get(), chunk.data(), static_cast<int>(chunk.size()), 0)) > 0)
        listing.append(chunk.data(), static_cast<size_t>(count));
    data.reset();
    return finishTransfer(session, count == 0, {});
}

int32_t downloadToMemory(const FtpServer &server, const std::string &remotePath, DownloadBuffer &buffer,
                         int64_t *size, const FtpProgress &progress) {
    buffer = {};
    FtpSession session;
    const int32_t opened = openSession(server, session);
    if (opened < 1) {
        progress.report(FtpSessionFailed, -1);
        return opened;
    }
    const auto fail = [&](uint32_t stage, int32_t result) {
        buffer = {};
        closeSession(session);
        progress.report(stage, -1);
        return result;
    };
    const int64_t announced = getFileSize(session.control.get(), remotePath);
    if (announced < 0 || !buffer.allocate(static_cast<size_t>(announced)))
        return fail(FtpSizeFailed, -6);
    if (size)
        *size = announced;
    if (!setBinaryType(session.control.get()))
        return fail(FtpBinaryRefused, -7);
    if (retrievePassive(session, remotePath, buffer, progress) != FtpDone)
        return fail(FtpTransfer, -9);
    closeSession(session);
    return 1;
}
