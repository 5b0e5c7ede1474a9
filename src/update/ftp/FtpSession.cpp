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

FtpResult fail(FtpSession &session, FtpResult result) {
    session.control.reset();
    return result;
}

} // namespace

FtpResult openSession(const FtpServer &server, FtpSession &session) {
    if (const int error = session.library.error()) {
        Diagnostics::printError("WSAStartup失败: ", error);
        return FtpResult::NoSockets;
    }
    session.serverAddress = server.address;
    session.localAddress = localAddressTowards(server.address);
    if (session.localAddress.empty())
        return FtpResult::NoLocalAddress;
    session.control = connectTcp(server.address, server.port, session.time);
    if (!session.control)
        return FtpResult::NotConnected;
    if (sendCommand(session, {}).replyClass() != 2)
        return fail(session, FtpResult::NotWelcome);
    if (!login(session, server.user, server.password))
        return fail(session, FtpResult::LoginRefused);
    return FtpResult::Done;
}

FtpResult closeSession(FtpSession &session) {
    if (session.answers)
        sendCommand(session, "QUIT");
    else
        sendLine(session, "QUIT");
    session.control.reset();
    return FtpResult::Done;
}
