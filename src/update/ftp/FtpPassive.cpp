#include "update/ftp/FtpPassive.h"

#include "update/ftp/FtpControl.h"
#include "update/ftp/SocketWaits.h"

#include <algorithm>
#include <vector>

namespace {

constexpr size_t kChunkSize = 65536; // what is sent or received at once, and reported

TransferResult fail(const FtpProgress &progress, uint32_t stage, TransferResult result) {
    progress.report(stage, -1);
    return result;
}

// Asks for a passive data connection, sends the command that uses it, and connects. The usual order is
// command, reply, data connection; servers that first wait for the data connection get it when they keep
// silent.
TransferResult openPassive(FtpSession &session, const std::string &command, const FtpProgress &progress,
                           UniqueSocket &data) {
    const FtpReply passive = sendCommand(session, "PASV");
    if (passive.replyClass() != 2)
        return fail(progress, FtpPassiveFailed, TransferResult::PassiveRefused);
    // Only the port is taken from the reply, so that a server cannot send the client to some other machine.
    const int32_t port = parsePassivePort(passive.text);
    if (port < 1)
        return fail(progress, FtpPassiveFailed, TransferResult::PortUnusable);

    if (!sendLine(session, command))
        return fail(progress, FtpDataFailed, TransferResult::CommandRefused);
    const bool answersFirst = waitReadable(session.control.get(), session.time.transferAnswerWait());
    session.answers = answersFirst;
    if (answersFirst && sendCommand(session, {}).replyClass() != 1)
        return fail(progress, FtpDataFailed, TransferResult::CommandRefused);
    data = connectTcp(session.serverAddress, static_cast<uint32_t>(port), session.time);
    if (!data)
        return fail(progress, FtpDataFailed, TransferResult::DataNotConnected);
    // Behind this reply the transfer's final one may be waiting already.
    if (!answersFirst && receiveWholeReply(session).replyClass() != 1)
        return fail(progress, FtpDataFailed, TransferResult::CommandRefused);
    return TransferResult::Done;
}

// Receives to the end of the data connection; false when it ends with an error.
bool receiveFile(SOCKET data, const TimeBudget &time, DownloadBuffer &buffer, const FtpProgress &progress) {
    std::vector<uint8_t> surplus(kChunkSize);
    uint64_t received = 0;
    for (;;) {
        const DownloadBuffer::Room room = buffer.room(kChunkSize);
        const bool isFull = room.size == 0;
        const int count = isFull ? receiveWithin(data, surplus.data(), surplus.size(), time.nextWait())
                                 : receiveWithin(data, room.start, room.size, time.nextWait());
        if (count <= 0)
            return count == 0;
        if (!isFull)
            buffer.fill(static_cast<size_t>(count));
        received += static_cast<uint64_t>(count);
        progress.report(FtpTransfer, progressPercent(received, buffer.size()));
    }
}

// The rest of a transfer, once its data connection has ended.
TransferResult finishTransfer(FtpSession &session, bool dataComplete, const FtpProgress &progress) {
    if (!dataComplete)
        return fail(progress, FtpTransfer, TransferResult::DataLost);
    if (sendCommand(session, {}).replyClass() != 2)
        return fail(progress, FtpTransfer, TransferResult::NotConfirmed);
    progress.report(FtpTransfer, 100);
    return TransferResult::Done;
}

} // namespace

TransferResult retrievePassive(FtpSession &session, const std::string &remotePath, DownloadBuffer &buffer,
                               const FtpProgress &progress) {
    UniqueSocket data;
    const TransferResult opened = openPassive(session, "RETR " + remotePath, progress, data);
    if (opened != TransferResult::Done)
        return opened;
    const bool complete = receiveFile(data.get(), session.time, buffer, progress);
    data.reset();
    return finishTransfer(session, complete, progress);
}

TransferResult uploadPassive(FtpSession &session, const void *bytes, size_t count,
                             const std::string &remotePath, const FtpProgress &progress) {
    UniqueSocket data;
    const TransferResult opened = openPassive(session, "STOR " + remotePath, progress, data);
    if (opened != TransferResult::Done)
        return opened;
    const std::string_view content(static_cast<const char *>(bytes), count);
    size_t sent = 0;
    while (sent < count) {
        const int taken = sendWithin(data.get(), content.substr(sent, kChunkSize), session.time.nextWait());
        if (taken == SOCKET_ERROR)
            break;
        sent += static_cast<size_t>(taken);
        progress.report(FtpTransfer, progressPercent(sent, count));
    }
    data.reset();
    return finishTransfer(session, sent == count, progress);
}

TransferResult listPassive(FtpSession &session, const std::string &remotePath, std::string &listing) {
    listing.clear();
    UniqueSocket data;
    const std::string command = remotePath.empty() ? "LIST" : "LIST " + remotePath;
    const TransferResult opened = openPassive(session, command, {}, data);
    if (opened != TransferResult::Done)
        return opened;
    std::vector<char> chunk(kChunkSize);
    int count;
    while ((count = receiveWithin(data.get(), chunk.data(), chunk.size(), session.time.nextWait())) > 0)
        listing.append(chunk.data(), static_cast<size_t>(count));
    data.reset();
    return finishTransfer(session, count == 0, {});
}
