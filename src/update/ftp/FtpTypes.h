// What all operations of the FTP client share: the server, how they end, and how they tell of their progress.
#pragma once

#include <cstdint>
#include <string>

struct FtpServer {
    std::string address; // dotted IPv4
    uint32_t port = 21;
    std::string user;
    std::string password;
};

// Each operation counts its own steps, so that one number stands for steps of different operations.
enum class FtpResult : int32_t {
    Done = 1,
    // A session
    NoSockets = -1,      // Windows Sockets do not start
    NoLocalAddress = -2, // no interface leads to the server
    NotConnected = -3,
    NotWelcome = -4, // the greeting is of another class than 2
    LoginRefused = -5,
    // A download into memory, when its session is open
    NoSize = -6, // or not that much memory
    BinaryRefused = -7,
    TransferFailed = -9,
    // A transfer
    PassiveRefused = -5,
    PortUnusable = -6,
    CommandRefused = -7,
    DataNotConnected = -8,
    DataLost = -9,
    NotConfirmed = -10,
};

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
