#include "update/FtpSession.h"

#include "update/Diagnostics.h"
#include "update/FtpControl.h"

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

int32_t giveUp(FtpSession &session, int32_t result) {
    session.control.reset();
    session.library.stop();
    return result;
}

} // namespace

int32_t openSession(const FtpServer &server, FtpSession &session) {
    if (const int error = session.library.start()) {
        Diagnostics::printError("WSAStartup失败: ", error);
        return -1;
    }
    session.serverAddress = server.address;
    session.timeoutMs = server.timeoutMs;
    session.localAddress = localAddressTowards(server.address);
    if (session.localAddress.empty())
        return giveUp(session, -2);
    session.control = connectTcp(server.address, server.port, server.timeoutMs);
    if (!session.control)
        return giveUp(session, -3);
    if (sendCommand(session.control.get(), {}).replyClass() != 2)
        return giveUp(session, -4);
    if (!login(session.control.get(), server.user, server.password))
        return giveUp(session, -5);
    return 1;
}

int32_t closeSession(FtpSession &session) {
    sendCommand(session.control.get(), "QUIT");
    return giveUp(session, 1);
}
