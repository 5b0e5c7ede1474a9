// An FTP server on the loopback address that does exactly what a test tells it to, wrong things included. It
// serves one session after the other in a thread of its own and never waits longer than some seconds for
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
    std::string reply; // sent as it stands
    Action action = Replies;
    std::string rest =
        {}; // of the reply, sent when the client has reacted to the first part, or waits in vain
};

struct FtpScript {
    // Instead of the usual behaviour. Steps are "GREETING", a command's name, and "FINAL" for the reply that
    // ends a transfer.
    std::map<std::string, FtpStep> steps;
    std::map<std::string, std::string> files; // bytes by the path as the client writes it
    size_t pieceSize = SIZE_MAX;              // files are sent in pieces with a pause after each whole one
    enum DataEnd { Closes, Resets, StaysSilent } dataEnd = Closes;
    bool acceptsFirst = false; // answers a transfer command when it has the data connection, and then at once
                               // with the final reply behind it
};

class ScriptedFtpServer {
public:
    explicit ScriptedFtpServer(FtpScript script = {});
    ~ScriptedFtpServer();

    uint32_t port() const { return port_; }
    void setScript(FtpScript script);          // for the sessions that begin from now on
    std::vector<std::string> commands() const; // all lines received so far
    std::string stored() const;                // what the last STOR brought
    // Waits until so many sessions have been ended by the client's closing its connection.
    bool awaitClosedSessions(int count) const;

private:
    void serve();
    FtpStep stepAt(const std::string &name, const std::string &usual) const;
    std::string usualReply(const std::string &command, const std::string &path);
    std::string receiveCommand(); // empty at the end of the session
    // These return false when the session is over.
    bool carryOut(const FtpStep &step);
    bool handle(const std::string &line);
    bool transfer(const std::string &command, const std::string &path);

    SocketLibrary library_;
    uint32_t port_ = 0;
    UniqueSocket listener_;
    std::atomic<bool> stopping_{false};
    std::atomic<int> closedSessions_{0};
    mutable std::mutex mutex_;
    FtpScript nextScript_;
    std::vector<std::string> commands_;
    std::string stored_;

    // Of the present session, looked at in the server's thread only.
    FtpScript script_;
    UniqueSocket control_;
    UniqueSocket dataListener_; // after PASV

    std::thread thread_;
};
