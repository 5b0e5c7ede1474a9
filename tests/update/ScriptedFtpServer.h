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

struct FtpScript {
    // Steps of a session: "GREETING", a command's name or its whole line, and "FINAL" for the reply that ends
    // a transfer.
    std::map<std::string, std::string> replies; // instead of the usual reply; sent as it stands
    std::string closesAt;                       // closes the control connection instead of replying
    std::string silentAt;                       // replies nothing until the client has gone
    std::string splitsAt; // sends the first splitLength bytes of the reply, then the rest
    size_t splitLength = 3;

    // By the path as the client writes it.
    std::map<std::string, std::string> files;
    std::map<std::string, std::vector<std::string>> pieces; // sent instead of the file, with pauses between
    bool opensNoData = false;                               // replies to RETR, and does nothing about it
    bool resetsData = false;                                // ends the data connection with a reset
};

class ScriptedFtpServer {
public:
    explicit ScriptedFtpServer(FtpScript script = {});
    ~ScriptedFtpServer();

    uint32_t port() const { return port_; }
    void setScript(FtpScript script); // for the sessions that begin from now on

    std::vector<std::string> commands() const; // all lines received so far
    std::string uploaded() const;              // by STOR

private:
    struct Session;

    void serve();
    void serveSession(Session &session);
    bool handle(Session &session, const std::string &line);
    bool transfer(Session &session, const std::string &command, const std::string &path);
    std::string defaultReply(Session &session, const std::string &command, const std::string &path);
    bool reply(Session &session, const std::vector<std::string> &stepNames, const std::string &usual);

    SocketLibrary library_;
    UniqueSocket listener_;
    uint32_t port_ = 0;
    std::atomic<bool> stopping_{false};
    mutable std::mutex mutex_;
    FtpScript script_;
    std::vector<std::string> commands_;
    std::string uploaded_;
    std::thread thread_;
};
