#include "update/ScriptedFtpServer.h"

#include "support/WaitUntil.h"
#include "update/SocketWaits.h"

#include <algorithm>

namespace {

constexpr std::chrono::seconds kPatience(5);
constexpr std::chrono::seconds kReactionTime(1);
constexpr std::chrono::milliseconds kPause(100); // what was sent arrives as a segment of its own

UniqueSocket listenOnLoopback(uint32_t &port) {
    UniqueSocket listener(socket(AF_INET, SOCK_STREAM, IPPROTO_TCP));
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    int size = sizeof address;
    if (bind(listener.get(), reinterpret_cast<sockaddr *>(&address), size) != 0 ||
        listen(listener.get(), 4) != 0 ||
        getsockname(listener.get(), reinterpret_cast<sockaddr *>(&address), &size) != 0)
        std::abort();
    port = ntohs(address.sin_port);
    return listener;
}

// A blocking send takes all of it.
bool sendAll(SOCKET to, const std::string &bytes) {
    return send(to, bytes.data(), static_cast<int>(bytes.size()), 0) == static_cast<int>(bytes.size());
}

std::string receiveToTheEnd(SOCKET from) {
    std::string bytes;
    char piece[4096];
    int count;
    while ((count = receiveWithin(from, piece, sizeof piece, kPatience)) > 0)
        bytes.append(piece, static_cast<size_t>(count));
    return bytes;
}

} // namespace

ScriptedFtpServer::ScriptedFtpServer(FtpScript script) : nextScript_(std::move(script)) {
    library_.start();
    listener_ = listenOnLoopback(port_);
    thread_ = std::thread([this] { serve(); });
}

ScriptedFtpServer::~ScriptedFtpServer() {
    stopping_ = true;
    thread_.join();
}

void ScriptedFtpServer::setScript(FtpScript script) {
    const std::lock_guard<std::mutex> lock(mutex_);
    nextScript_ = std::move(script);
}

std::vector<std::string> ScriptedFtpServer::commands() const {
    const std::lock_guard<std::mutex> lock(mutex_);
    return commands_;
}

std::string ScriptedFtpServer::stored() const {
    const std::lock_guard<std::mutex> lock(mutex_);
    return stored_;
}

bool ScriptedFtpServer::awaitClosedSessions(int count) const {
    return waitUntil([&] { return closedSessions_ >= count; }, 10000);
}

void ScriptedFtpServer::serve() {
    while (!stopping_) {
        control_ = acceptWithin(listener_.get(), std::chrono::milliseconds(20));
        if (!control_)
            continue;
        {
            const std::lock_guard<std::mutex> lock(mutex_);
            script_ = nextScript_;
        }
        bool goesOn = carryOut(stepAt("GREETING", "220 ready\r\n"));
        while (goesOn) {
            const std::string line = receiveCommand();
            goesOn = !line.empty() && handle(line);
        }
        control_.reset();
    }
}

std::string ScriptedFtpServer::receiveCommand() {
    std::string line;
    char c;
    int count;
    while ((count = receiveWithin(control_.get(), &c, 1, kPatience)) == 1) {
        line += c;
        if (c != '\n')
            continue;
        line.erase(line.find_last_not_of("\r\n") + 1);
        const std::lock_guard<std::mutex> lock(mutex_);
        commands_.push_back(line);
        return line;
    }
    if (count == 0 || WSAGetLastError() != WSAETIMEDOUT) // a reset when it has left something unread
        ++closedSessions_;
    return {};
}

FtpStep ScriptedFtpServer::stepAt(const std::string &name, const std::string &usual) const {
    const auto found = script_.steps.find(name);
    return found == script_.steps.end() ? FtpStep{usual} : found->second;
}

bool ScriptedFtpServer::carryOut(const FtpStep &step) {
    if (step.action == FtpStep::StaysSilent) {
        while (!receiveCommand().empty()) { // until the client has gone
        }
    }
    if (step.action != FtpStep::Replies || !sendAll(control_.get(), step.reply))
        return false;
    if (step.rest.empty())
        return true;
    waitReadable(control_.get(), kReactionTime);
    sendAll(control_.get(), step.rest); // the client may have gone already
    return true;
}

bool ScriptedFtpServer::handle(const std::string &line) {
    const size_t blank = line.find(' ');
    const std::string command = line.substr(0, blank);
    const std::string path = blank == std::string::npos ? "" : line.substr(blank + 1);
    const bool transfers = command == "RETR" || command == "STOR" || command == "LIST";
    const FtpStep step = stepAt(command, usualReply(command, path));
    if (transfers && script_.acceptsFirst)
        return transfer(command, path);
    if (!carryOut(step))
        return false;
    return !transfers || step.reply.front() != '1' || transfer(command, path);
}

bool ScriptedFtpServer::transfer(const std::string &command, const std::string &path) {
    waitUntil([&] { // a client that gives up says so on the control connection
        return waitReadable(dataListener_.get(), std::chrono::milliseconds(5)) ||
               waitReadable(control_.get(), std::chrono::milliseconds(0));
    });
    UniqueSocket data = acceptWithin(dataListener_.get(), std::chrono::milliseconds(0));
    std::string firstReply = script_.acceptsFirst ? "150-coming\r\n150 now\r\n" : "";
    if (command == "STOR") {
        sendAll(control_.get(), firstReply);
        firstReply.clear();
        const std::string bytes = receiveToTheEnd(data.get());
        const std::lock_guard<std::mutex> lock(mutex_);
        stored_ = bytes;
    } else {
        const std::string &file = script_.files[path];
        for (size_t at = 0; at < file.size(); at += std::min(script_.pieceSize, file.size() - at)) {
            const std::string piece = file.substr(at, script_.pieceSize);
            sendAll(data.get(), piece);
            if (piece.size() == script_.pieceSize || script_.dataEnd == FtpScript::Resets)
                std::this_thread::sleep_for(kPause);
        }
    }
    if (script_.dataEnd == FtpScript::Resets) {
        const linger atOnce{1, 0};
        setsockopt(data.get(), SOL_SOCKET, SO_LINGER, reinterpret_cast<const char *>(&atOnce), sizeof atOnce);
    } else if (script_.dataEnd == FtpScript::StaysSilent) {
        receiveToTheEnd(data.get()); // until the client gives up
    } else if (!script_.acceptsFirst) {
        // The final reply waits until the client has closed, so that it never comes together with the first.
        shutdown(data.get(), SD_SEND);
        receiveToTheEnd(data.get());
    }
    data.reset();
    FtpStep last = stepAt("FINAL", "226 done\r\n");
    last.reply.insert(0, firstReply);
    return carryOut(last);
}

std::string ScriptedFtpServer::usualReply(const std::string &command, const std::string &path) {
    if (command == "PASV") {
        uint32_t port = 0;
        dataListener_ = listenOnLoopback(port);
        return "227 Entering Passive Mode (10,9,8,7," + std::to_string(port / 256) + "," +
               std::to_string(port % 256) + ")\r\n"; // the client must not connect to that address
    }
    if (command == "SIZE") {
        const auto file = script_.files.find(path);
        return file == script_.files.end() ? "550 no such file\r\n"
                                           : "213 " + std::to_string(file->second.size()) + "\r\n";
    }
    static const std::map<std::string, std::string> usual = {
        {"USER", "331 password?\r\n"}, {"PASS", "230 welcome\r\n"}, {"TYPE", "200 ok\r\n"},
        {"RETR", "150 coming\r\n"},    {"QUIT", "221 bye\r\n"},
    };
    const auto found = usual.find(command);
    return found == usual.end() ? "500 what?\r\n" : found->second;
}
