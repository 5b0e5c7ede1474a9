// An FTP server on the loopback address that does exactly what a test tells it to, wrong things included. It
// serves one session after the other in a thread of its own and waits some seconds at most for anything.
#pragma once

#include "simulator/WaitUntil.h"
#include "update/ftp/SocketWaits.h"

#include <algorithm>
#include <atomic>
#include <map>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

struct FtpScript {
    // Replies by "GREETING", a command's name, or "FINAL" (what ends a transfer), in place of the usual ones.
    // A part after the first is sent when the client has reacted, or waits in vain. An empty part closes the
    // connection; no part at all is silence until the client has gone.
    std::map<std::string, std::vector<std::string>> replies;
    std::map<std::string, std::string> files; // bytes by the path as the client writes it
    bool keepsDataOpen = false;               // after the file, until the client gives up
    bool acceptsFirst = false; // answers RETR when it has the data connection, with the final reply only
    std::string heldLine;      // not carried out before release()
};

class ScriptedFtpServer {
public:
    explicit ScriptedFtpServer(FtpScript script = {}) : script_(std::move(script)) {
        listener_ = listenOnLoopback(port_);
        uint32_t data = 0;
        dataListener_ = listenOnLoopback(data);
        const std::string numbers = std::to_string(data / 256) + "," + std::to_string(data % 256);
        script_.replies.insert({
            {"GREETING", {"220 ready\r\n"}},
            {"USER", {"331 password?\r\n"}},
            {"PASS", {"230 welcome\r\n"}},
            {"TYPE", {"200 ok\r\n"}},
            {"PASV", {"227 (10,9,8,7," + numbers + ")\r\n"}}, // the client must not connect to that address
            {"RETR", {"150 coming\r\n"}},
            {"FINAL", {"226 done\r\n"}},
            {"QUIT", {"221 bye\r\n"}},
        });
        thread_ = std::thread([this] { serve(); });
    }
    ~ScriptedFtpServer() {
        isStopping_ = true;
        thread_.join();
    }

    uint32_t port() const { return port_; }
    // The lines received so far; "closed" where the client has closed.
    std::vector<std::string> lines() const {
        const std::lock_guard<std::mutex> lock(mutex_);
        return lines_;
    }
    bool awaitLine(const std::string &line, int count = 1) const {
        return waitUntil([&] {
            const std::vector<std::string> seen = lines();
            return std::count(seen.begin(), seen.end(), line) >= count;
        });
    }
    void release() { isReleased_ = true; }

private:
    static constexpr std::chrono::seconds kPatience{3};

    static UniqueSocket listenOnLoopback(uint32_t &port) {
        UniqueSocket listener(socket(AF_INET, SOCK_STREAM, IPPROTO_TCP));
        sockaddr_in place{};
        place.sin_family = AF_INET;
        place.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        int size = sizeof place;
        auto *address = reinterpret_cast<sockaddr *>(&place);
        bind(listener.get(), address, size);
        listen(listener.get(), 4);
        getsockname(listener.get(), address, &size);
        port = ntohs(place.sin_port);
        return listener;
    }

    static void sendAll(const UniqueSocket &to, const std::string &bytes) { // a blocking send takes all of it
        send(to.get(), bytes.data(), static_cast<int>(bytes.size()), 0);
    }

    void serve() {
        while (!isStopping_) {
            control_ = acceptWithin(listener_.get(), std::chrono::milliseconds(20));
            bool goesOn = control_ && reply("GREETING");
            while (goesOn) {
                const std::string line = receiveLine();
                goesOn = !line.empty() && carryOut(line);
            }
        }
    }

    std::string receiveLine() { // empty at the end of the session
        std::string line;
        char c = 0;
        int count = 0;
        while (c != '\n' && (count = receiveWithin(control_.get(), &c, 1, kPatience)) == 1)
            line += c;
        const bool isClosed = count == 0 || (count < 0 && WSAGetLastError() != WSAETIMEDOUT);
        line.erase(line.find_last_not_of("\r\n") + 1);
        const std::lock_guard<std::mutex> lock(mutex_);
        lines_.push_back(isClosed ? "closed" : line);
        return count == 1 ? line : "";
    }

    // This and the next are false when the session is over.
    bool reply(const std::string &step) {
        const std::vector<std::string> &parts = script_.replies[step];
        for (size_t i = 0; i < parts.size(); ++i) {
            if (parts[i].empty())
                return false;
            if (i > 0)
                waitReadable(control_.get(), std::chrono::seconds(1));
            sendAll(control_, parts[i]);
        }
        while (parts.empty() && !receiveLine().empty()) {
        }
        return !parts.empty();
    }

    bool carryOut(const std::string &line) {
        const size_t blank = line.find(' ');
        const std::string command = line.substr(0, blank), path = line.substr(blank + 1);
        if (line == script_.heldLine)
            waitUntil([this] { return isReleased_.load(); });
        if (command == "SIZE" && script_.replies.count(command) == 0) {
            const auto file = script_.files.find(path);
            const bool exists = file != script_.files.end();
            sendAll(control_,
                    exists ? "213 " + std::to_string(file->second.size()) + "\r\n" : "550 none\r\n");
            return true;
        }
        if (command != "RETR")
            return reply(command);
        if (!script_.acceptsFirst && !reply(command))
            return false;
        return script_.replies[command].front().front() != '1' || sendFile(script_.files[path]);
    }

    bool sendFile(const std::string &bytes) {
        UniqueSocket data = acceptWithin(dataListener_.get(), kPatience);
        sendAll(data, bytes);
        char none;
        if (script_.keepsDataOpen)
            receiveWithin(data.get(), &none, 1, kPatience);
        data.reset();
        return reply("FINAL");
    }

    SocketLibrary library_;
    FtpScript script_;
    uint32_t port_ = 0;
    UniqueSocket listener_, control_, dataListener_;
    std::atomic<bool> isStopping_{false}, isReleased_{false};
    mutable std::mutex mutex_;
    std::vector<std::string> lines_;
    std::thread thread_;
};
