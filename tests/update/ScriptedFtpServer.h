// An FTP server on the loopback address that does exactly what a test tells it to, wrong things included. It
// serves one session after the other in a thread of its own and never waits longer than a few seconds for
// anything.
#pragma once

#include "update/Sockets.h"

#include <atomic>
#include <map>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

// What the server does at one step of a session.
struct FtpStep {
    enum Action { Replies, Closes, StaysSilent };
    std::string reply;  // sent as it stands
    size_t splitAt = 0; // when not 0: the reply comes in two pieces, the first of so many bytes
    Action action = Replies;
};

struct FtpScript {
    // Instead of the usual behaviour. Steps are "GREETING", a command's whole line or its name, and "FINAL"
    // for the reply that ends a transfer.
    std::map<std::string, FtpStep> steps;
    // By the path as the client writes it: the pieces that are sent, with pauses between them.
    std::map<std::string, std::vector<std::string>> files;
    bool opensNoData = false; // replies to RETR, and does nothing about it
    bool resetsData = false;  // ends the data connection with a reset
};

class ScriptedFtpServer {
public:
    explicit ScriptedFtpServer(FtpScript script = {});
    ~ScriptedFtpServer();

    uint32_t port() const { return port_; }
    void setScript(FtpScript script);          // for the sessions that begin from now on
    std::vector<std::string> commands() const; // all lines received so far

private:
    void serve();
    FtpStep stepAt(std::initializer_list<std::string> names, const std::string &usual) const;
    std::string usualReply(const std::string &command, const std::string &path);
    // These return false when the session is over.
    bool carryOut(const FtpStep &step);
    bool handle(const std::string &line);
    bool transfer(const std::string &path);

    SocketLibrary library_;
    uint32_t port_ = 0;
    UniqueSocket listener_;
    std::atomic<bool> stopping_{false};
    mutable std::mutex mutex_;
    FtpScript nextScript_;
    std::vector<std::string> commands_;

    // Of the present session, looked at in the server's thread only.
    FtpScript script_;
    UniqueSocket control_;
    UniqueSocket dataListener_; // after PASV
    int32_t activePort_ = 0;    // after PORT

    std::thread thread_;
};
