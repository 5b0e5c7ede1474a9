// How the FTP client tells of a download's progress.
#pragma once

#include <cstdint>

// All but FtpTransfer come with the value -1 only.
enum FtpStage : uint32_t {
    FtpSessionFailed = 1,
    FtpTransfer = 2, // value: percentage, or -1 when the transfer failed
    FtpSizeFailed = 5,
    FtpBinaryRefused = 6,
    FtpPassiveFailed = 8,
    FtpDataFailed = 10, // command refused, or no data connection
};

// Called on the thread that transfers. Context is passed through unchanged.
struct FtpProgress {
    using Callback = void (*)(uint32_t stage, int32_t value, uintptr_t context);
    Callback callback = nullptr;
    uintptr_t context = 0;

    void report(uint32_t stage, int32_t value) const {
        if (callback)
            callback(stage, value, context);
    }
};
