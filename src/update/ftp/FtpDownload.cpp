#include "update/ftp/FtpDownload.h"

#include "update/ftp/FtpControl.h"
#include "update/ftp/FtpPassive.h"

DownloadResult downloadToMemory(const FtpServer &server, const std::string &remotePath,
                                DownloadBuffer &buffer, int64_t *size, const FtpProgress &progress,
                                const TimeLimits &limits) {
    buffer = {};
    FtpSession session(limits);
    const SessionResult opened = openSession(server, session);
    if (opened != SessionResult::Open) {
        progress.report(FtpSessionFailed, -1);
        return static_cast<DownloadResult>(opened);
    }
    const auto fail = [&](uint32_t stage, DownloadResult result) {
        buffer = {};
        closeSession(session);
        progress.report(stage, -1);
        return result;
    };
    const int64_t announced = getFileSize(session, remotePath);
    if (announced < 0 || !buffer.allocate(static_cast<size_t>(announced)))
        return fail(FtpSizeFailed, DownloadResult::NoSize);
    if (size)
        *size = announced;
    if (!setBinaryType(session))
        return fail(FtpBinaryRefused, DownloadResult::BinaryRefused);
    if (retrievePassive(session, remotePath, buffer, progress) != TransferResult::Done)
        return fail(FtpTransfer, DownloadResult::TransferFailed);
    closeSession(session);
    return DownloadResult::Done;
}
