#include "update/ftp/FtpSession.h"

#include "update/ftp/Diagnostics.h"
#include "update/ftp/FtpControl.h"

namespace {

// Connecting a UDP socket sends nothing, but makes the system choose the interface.
std::string localAddressTowards(const std::string &serverIp) {
    const UniqueSocket probe(socket(AF_INET, SOCK_DGRAM, IPPROTO_UDP));
    if (!probe)
        return {};
    sockaddr_in server{};
    server.sin_family = AF_INET;
    server.sin_port = htons(80);
    inet_pton(AF_INET, serverIp.c_str(), &server.sin_addr);
    static_cast<void>(connect(probe.get(), reinterpret_cast<const sockaddr *>(&server), sizeof server));

    sockaddr_in local{};
    int size = sizeof local;
    getsockname(probe.get(), reinterpret_cast<sockaddr *>(&local), &size);
    char text[INET_ADDRSTRLEN] = {};
    inet_ntop(AF_INET, &local.sin_addr, text, sizeof text);
    return text;
}

template<typename Result>
Result end(FtpSession &session, Result result) {
    session.control.reset();
    session.library.stop();
    return result;
}

} // namespace

SessionResult openSession(const FtpServer &server, FtpSession &session) {
    if (const int error = session.library.start()) {
        Diagnostics::printError("WSAStartup失败: ", error);
        return SessionResult::NoSockets;
    }
    session.serverAddress = server.address;
    session.localAddress = localAddressTowards(server.address);
    if (session.localAddress.empty())
        return end(session, SessionResult::NoLocalAddress);
    session.control = connectTcp(server.address, server.port, session.time);
    if (!session.control)
        return end(session, SessionResult::NotConnected);
    if (sendCommand(session, {}).replyClass() != 2)
        return end(session, SessionResult::NotWelcome);
    if (!login(session, server.user, server.password))
        return end(session, SessionResult::LoginRefused);
    return SessionResult::Open;
}

int32_t closeSession(FtpSession &session) {
    if (session.answers)
        sendCommand(session, "QUIT");
    else
        sendLine(session, "QUIT");
    return end(session, 1);
}
