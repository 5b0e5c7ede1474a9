#include "update/ScriptedFtpServer.h"

#include <algorithm>
#include <chrono>

namespace {

constexpr uint32_t kPatienceMs = 2000;
constexpr auto kPause = std::chrono::milliseconds(100); // what was sent arrives as a segment of its own

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

UniqueSocket acceptWithin(SOCKET listener, uint32_t milliseconds) {
    fd_set waiting;
    FD_ZERO(&waiting);
    FD_SET(listener, &waiting);
    timeval limit{static_cast<long>(milliseconds / 1000), static_cast<long>(milliseconds % 1000 * 1000)};
    UniqueSocket peer;
    if (select(0, &waiting, nullptr, nullptr, &limit) > 0)
        peer.reset(accept(listener, nullptr, nullptr));
    if (peer)
        setSocketTimeout(peer.get(), kPatienceMs);
    return peer;
}

// A blocking send takes all of it.
bool sendAll(SOCKET to, const std::string &bytes) {
    return send(to, bytes.data(), static_cast<int>(bytes.size()), 0) == static_cast<int>(bytes.size());
}

// Without the line end; empty at the end of the connection.
std::string receiveLine(SOCKET from) {
    std::string line;
    char c;
    while (recv(from, &c, 1, 0) == 1) {
        line += c;
        if (c == '\n')
            return line.substr(0, line.find_last_not_of("\r\n") + 1);
    }
    return {};
}

void receiveToTheEnd(SOCKET from) {
    char bytes[4096];
    while (recv(from, bytes, sizeof bytes, 0) > 0) {
    }
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

void ScriptedFtpServer::serve() {
    while (!stopping_) {
        control_ = acceptWithin(listener_.get(), 20);
        if (!control_)
            continue;
        {
            const std::lock_guard<std::mutex> lock(mutex_);
            script_ = nextScript_;
        }
        bool goesOn = carryOut(stepAt("GREETING", "220 ready\r\n"));
        while (goesOn) {
            const std::string line = receiveLine(control_.get());
            goesOn = !line.empty() && handle(line);
        }
        control_.reset();
    }
}

FtpStep ScriptedFtpServer::stepAt(const std::string &name, const std::string &usual) const {
    const auto found = script_.steps.find(name);
    return found == script_.steps.end() ? FtpStep{usual} : found->second;
}

bool ScriptedFtpServer::carryOut(const FtpStep &step) {
    if (step.action == FtpStep::StaysSilent)
        receiveToTheEnd(control_.get()); // until the client has gone
    if (step.action != FtpStep::Replies)
        return false;
    return sendAll(control_.get(), step.reply);
}

bool ScriptedFtpServer::handle(const std::string &line) {
    {
        const std::lock_guard<std::mutex> lock(mutex_);
        commands_.push_back(line);
    }
    const size_t blank = line.find(' ');
    const std::string command = line.substr(0, blank);
    const std::string path = blank == std::string::npos ? "" : line.substr(blank + 1);
    const FtpStep step = stepAt(command, usualReply(command, path));
    if (!carryOut(step))
        return false;
    if (command == "RETR" && step.reply.front() == '1')
        return transfer(path);
    return command != "QUIT";
}

bool ScriptedFtpServer::transfer(const std::string &path) {
    UniqueSocket data = acceptWithin(dataListener_.get(), kPatienceMs);
    const std::string &file = script_.files[path];
    for (size_t at = 0; at < file.size(); at += std::min(script_.pieceSize, file.size() - at)) {
        const std::string piece = file.substr(at, script_.pieceSize);
        sendAll(data.get(), piece);
        if (piece.size() == script_.pieceSize || script_.resetsData)
            std::this_thread::sleep_for(kPause);
    }
    if (script_.resetsData) {
        const linger atOnce{1, 0};
        setsockopt(data.get(), SOL_SOCKET, SO_LINGER, reinterpret_cast<const char *>(&atOnce), sizeof atOnce);
    } else {
        // The final reply waits until the client has closed, so that it never comes together with the first.
        shutdown(data.get(), SD_SEND);
        receiveToTheEnd(data.get());
    }
    data.reset();
    return carryOut(stepAt("FINAL", "226 done\r\n"));
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
