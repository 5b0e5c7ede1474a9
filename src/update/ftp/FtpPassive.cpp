#include "update/ftp/FtpPassive.h"

#include "update/ftp/FtpControl.h"
#include "update/ftp/SocketWaits.h"

#include <algorithm>

namespace {

FtpResult fail(const FtpProgress &progress, uint32_t stage, FtpResult result) {
    progress.report(stage, -1);
    return result;
}

// Asks for a passive data connection, sends the command that uses it, and connects. The usual order is
// command, reply, data connection; servers that first wait for the data connection get it when they keep
// silent.
FtpResult openPassive(FtpSession &session, const std::string &command, const FtpProgress &progress,
                      UniqueSocket &data) {
    const FtpReply passive = sendCommand(session, "PASV");
    if (passive.replyClass() != 2)
        return fail(progress, FtpPassiveFailed, FtpResult::PassiveRefused);
    // Only the port is taken from the reply, so that a server cannot send the client to some other machine.
    const int32_t port = parsePassivePort(passive.text);
    if (port < 1)
        return fail(progress, FtpPassiveFailed, FtpResult::PortUnusable);

    if (!sendLine(session, command))
        return fail(progress, FtpDataFailed, FtpResult::CommandRefused);
    const bool answersFirst = waitReadable(session.control.get(), session.time.transferAnswerWait());
    session.answers = answersFirst;
    if (answersFirst && sendCommand(session, {}).replyClass() != 1)
        return fail(progress, FtpDataFailed, FtpResult::CommandRefused);
    data = connectTcp(session.serverAddress, static_cast<uint32_t>(port), session.time);
    if (!data)
        return fail(progress, FtpDataFailed, FtpResult::DataNotConnected);
    // Behind this reply the transfer's final one may be waiting already.
    if (!answersFirst && receiveWholeReply(session).replyClass() != 1)
        return fail(progress, FtpDataFailed, FtpResult::CommandRefused);
    return FtpResult::Done;
}

// A whole transfer. move does its work on the data connection and returns whether all went over.
template<typename Move>
FtpResult transfer(FtpSession &session, const std::string &command, const FtpProgress &progress, Move move) {
    UniqueSocket data;
    const FtpResult opened = openPassive(session, command, progress, data);
    if (opened != FtpResult::Done)
        return opened;
    const bool isComplete = move(data.get());
    data.reset();
    if (!isComplete)
        return fail(progress, FtpTransfer, FtpResult::DataLost);
    if (sendCommand(session, {}).replyClass() != 2)
        return fail(progress, FtpTransfer, FtpResult::NotConfirmed);
    progress.report(FtpTransfer, 100);
    return FtpResult::Done;
}

} // namespace

FtpResult retrievePassive(FtpSession &session, const std::string &remotePath, std::vector<uint8_t> &buffer,
                          size_t expectedSize, const FtpProgress &progress) {
    buffer.clear();
    uint64_t received = 0;
    const auto take = [&](std::string_view bytes) {
        const std::string_view wanted = bytes.substr(0, expectedSize - buffer.size());
        buffer.insert(buffer.end(), wanted.begin(), wanted.end());
        received += bytes.size();
        progress.report(FtpTransfer, progressPercent(received, expectedSize));
    };
    const FtpResult result = transfer(session, "RETR " + remotePath, progress,
                                      [&](SOCKET data) { return receiveAll(data, session.time, take); });
    if (result == FtpResult::Done)
        buffer.resize(expectedSize);
    return result;
}

FtpResult uploadPassive(FtpSession &session, const void *bytes, size_t count, const std::string &remotePath,
                        const FtpProgress &progress) {
    return transfer(session, "STOR " + remotePath, progress, [&](SOCKET data) {
        const std::string_view content(static_cast<const char *>(bytes), count);
        size_t sent = 0;
        while (sent < count) {
            const int taken = sendWithin(data, content.substr(sent, kChunkSize), session.time.nextWait());
            if (taken == SOCKET_ERROR)
                return false;
            sent += static_cast<size_t>(taken);
            progress.report(FtpTransfer, progressPercent(sent, count));
        }
        return true;
    });
}

FtpResult listPassive(FtpSession &session, const std::string &remotePath, std::string &listing) {
    listing.clear();
    return transfer(session, remotePath.empty() ? "LIST" : "LIST " + remotePath, {}, [&](SOCKET data) {
        return receiveAll(data, session.time, [&](std::string_view text) { listing += text; });
    });
}
