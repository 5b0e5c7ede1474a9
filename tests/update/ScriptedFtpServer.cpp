#include "update/ScriptedFtpServer.h"

#include <algorithm>
#include <chrono>
#include <cstdio>

struct ScriptedFtpServer::Session {
    FtpScript script;
    UniqueSocket control;
    UniqueSocket dataListener; // after PASV
    sockaddr_in activePeer{};  // after PORT
};

namespace {

constexpr uint32_t kPatienceMs = 2000;

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

bool sendAll(SOCKET to, const std::string &bytes) {
    size_t sent = 0;
    while (sent < bytes.size()) {
        const int count = send(to, bytes.data() + sent, static_cast<int>(bytes.size() - sent), 0);
        if (count <= 0)
            return false;
        sent += static_cast<size_t>(count);
    }
    return true;
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

std::string receiveAll(SOCKET from) {
    std::string all;
    char bytes[4096];
    for (int count; (count = recv(from, bytes, sizeof bytes, 0)) > 0;)
        all.append(bytes, static_cast<size_t>(count));
    return all;
}

const std::string *replacedReply(const FtpScript &script, const std::vector<std::string> &stepNames) {
    for (const std::string &name : stepNames)
        if (const auto found = script.replies.find(name); found != script.replies.end())
            return &found->second;
    return nullptr;
}

void pause(uint32_t milliseconds) {
    std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
}

} // namespace

ScriptedFtpServer::ScriptedFtpServer(FtpScript script) : script_(std::move(script)) {
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
    script_ = std::move(script);
}

std::vector<std::string> ScriptedFtpServer::commands() const {
    const std::lock_guard<std::mutex> lock(mutex_);
    return commands_;
}

std::string ScriptedFtpServer::uploaded() const {
    const std::lock_guard<std::mutex> lock(mutex_);
    return uploaded_;
}

void ScriptedFtpServer::serve() {
    while (!stopping_) {
        Session session;
        session.control = acceptWithin(listener_.get(), 20);
        if (!session.control)
            continue;
        {
            const std::lock_guard<std::mutex> lock(mutex_);
            session.script = script_;
        }
        serveSession(session);
    }
}

void ScriptedFtpServer::serveSession(Session &session) {
    if (!reply(session, {"GREETING"}, "220 ready\r\n"))
        return;
    for (;;) {
        const std::string line = receiveLine(session.control.get());
        if (line.empty() || !handle(session, line))
            return;
    }
}

bool ScriptedFtpServer::handle(Session &session, const std::string &line) {
    {
        const std::lock_guard<std::mutex> lock(mutex_);
        commands_.push_back(line);
    }
    const size_t blank = line.find(' ');
    const std::string command = line.substr(0, blank);
    const std::string path = blank == std::string::npos ? "" : line.substr(blank + 1);
    if (!reply(session, {line, command}, defaultReply(session, command, path)))
        return false;
    const std::string *replaced = replacedReply(session.script, {line, command});
    const bool refused = replaced && replaced->front() != '1';
    if (!refused && !session.script.opensNoData &&
        (command == "RETR" || command == "STOR" || command == "LIST"))
        return transfer(session, command, path);
    return command != "QUIT";
}

bool ScriptedFtpServer::transfer(Session &session, const std::string &command, const std::string &path) {
    UniqueSocket data;
    if (session.activePeer.sin_port != 0) {
        data.reset(socket(AF_INET, SOCK_STREAM, IPPROTO_TCP));
        connect(data.get(), reinterpret_cast<const sockaddr *>(&session.activePeer),
                sizeof session.activePeer);
    } else {
        data = acceptWithin(session.dataListener.get(), kPatienceMs);
    }
    if (command == "STOR") {
        const std::string bytes = receiveAll(data.get());
        const std::lock_guard<std::mutex> lock(mutex_);
        uploaded_ = bytes;
    } else if (session.script.pieces.count(path) > 0) {
        for (const std::string &piece : session.script.pieces[path]) {
            sendAll(data.get(), piece);
            pause(100);
        }
    } else {
        sendAll(data.get(), session.script.files[path]);
    }
    if (session.script.resetsData) {
        pause(100); // what was sent should arrive
        const linger atOnce{1, 0};
        setsockopt(data.get(), SOL_SOCKET, SO_LINGER, reinterpret_cast<const char *>(&atOnce), sizeof atOnce);
    } else {
        // The final reply waits until the client has closed, so that it never comes together with the first.
        shutdown(data.get(), SD_SEND);
        receiveAll(data.get());
    }
    data.reset();
    return reply(session, {"FINAL"}, "226 done\r\n");
}

std::string ScriptedFtpServer::defaultReply(Session &session, const std::string &command,
                                            const std::string &path) {
    if (command == "PASV") {
        uint32_t port = 0;
        session.dataListener = listenOnLoopback(port);
        return "227 Entering Passive Mode (10,9,8,7," + std::to_string(port / 256) + "," +
               std::to_string(port % 256) + ")\r\n"; // the client must not connect to that address
    }
    if (command == "PORT") {
        unsigned h[4], p1, p2;
        if (std::sscanf(path.c_str(), "%u,%u,%u,%u,%u,%u", &h[0], &h[1], &h[2], &h[3], &p1, &p2) != 6)
            return "501 what?\r\n";
        session.activePeer.sin_family = AF_INET;
        session.activePeer.sin_addr.s_addr = htonl(h[0] << 24 | h[1] << 16 | h[2] << 8 | h[3]);
        session.activePeer.sin_port = htons(static_cast<u_short>(p1 * 256 + p2));
        return "200 ok\r\n";
    }
    if (command == "SIZE") {
        const auto file = session.script.files.find(path);
        return file == session.script.files.end() ? "550 no such file\r\n"
                                                  : "213 " + std::to_string(file->second.size()) + "\r\n";
    }
    static const std::map<std::string, std::string> usual = {
        {"USER", "331 password?\r\n"},      {"PASS", "230 welcome\r\n"}, {"TYPE", "200 ok\r\n"},
        {"MDTM", "213 20240501134500\r\n"}, {"RETR", "150 coming\r\n"},  {"STOR", "150 send\r\n"},
        {"LIST", "150 coming\r\n"},         {"QUIT", "221 bye\r\n"},
    };
    const auto found = usual.find(command);
    return found == usual.end() ? "500 what?\r\n" : found->second;
}

bool ScriptedFtpServer::reply(Session &session, const std::vector<std::string> &stepNames,
                              const std::string &usual) {
    const FtpScript &script = session.script;
    const auto isHere = [&](const std::string &step) {
        return std::find(stepNames.begin(), stepNames.end(), step) != stepNames.end();
    };
    if (isHere(script.closesAt))
        return false;
    if (isHere(script.silentAt)) {
        receiveAll(session.control.get()); // until the client has gone
        return false;
    }
    const std::string *replaced = replacedReply(script, stepNames);
    const std::string &text = replaced ? *replaced : usual;
    if (!isHere(script.splitsAt))
        return sendAll(session.control.get(), text);
    if (!sendAll(session.control.get(), text.substr(0, script.splitLength)))
        return false;
    pause(150);
    return sendAll(session.control.get(), text.substr(script.splitLength));
}
