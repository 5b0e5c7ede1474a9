#include "update/ftp/FtpDownload.h"

#include "update/ftp/FtpControl.h"
#include "update/ftp/FtpPassive.h"

#include <new>

namespace {

// Memory that is not touched yet, so that a size that the server only claims costs nothing.
bool reserve(std::vector<uint8_t> &bytes, int64_t size) {
    try {
        bytes.reserve(static_cast<size_t>(size));
        return true;
    } catch (const std::bad_alloc &) {
        return false;
    }
}

} // namespace

FtpResult downloadToMemory(const FtpServer &server, const std::string &remotePath,
                           std::vector<uint8_t> &buffer, int64_t *size, const FtpProgress &progress,
                           const TimeLimits &limits) {
    buffer = std::vector<uint8_t>();
    FtpSession session(limits);
    const FtpResult opened = openSession(server, session);
    if (opened != FtpResult::Done) {
        progress.report(FtpSessionFailed, -1);
        return opened;
    }
    const auto fail = [&](uint32_t stage, FtpResult result) {
        closeSession(session);
        progress.report(stage, -1);
        return result;
    };
    std::vector<uint8_t> bytes;
    const int64_t announced = getFileSize(session, remotePath);
    if (announced < 0 || !reserve(bytes, announced))
        return fail(FtpSizeFailed, FtpResult::NoSize);
    if (size)
        *size = announced;
    if (!setBinaryType(session))
        return fail(FtpBinaryRefused, FtpResult::BinaryRefused);
    if (retrievePassive(session, remotePath, bytes, static_cast<size_t>(announced), progress) !=
        FtpResult::Done)
        return fail(FtpTransfer, FtpResult::TransferFailed);
    closeSession(session);
    buffer = std::move(bytes);
    return FtpResult::Done;
}
