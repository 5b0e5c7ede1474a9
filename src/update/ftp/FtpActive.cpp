#include "update/ftp/FtpActive.h"

#include "helpers/UniqueFile.h"
#include "update/ftp/Diagnostics.h"
#include "update/ftp/FtpControl.h"
#include "update/ftp/SocketWaits.h"

#include <vector>

namespace {

// A listening socket on a free port of the session's local address; empty after a failure.
UniqueSocket listenForServer(const FtpSession &session, uint16_t &port) {
    UniqueSocket listener(socket(AF_INET, SOCK_STREAM, IPPROTO_TCP));
    if (!listener) {
        Diagnostics::printError("创建数据套接字失败: ", WSAGetLastError());
        return {};
    }
    sockaddr_in local{};
    local.sin_family = AF_INET;
    inet_pton(AF_INET, session.localAddress.c_str(), &local.sin_addr);
    if (bind(listener.get(), reinterpret_cast<const sockaddr *>(&local), sizeof local) == SOCKET_ERROR) {
        Diagnostics::printError("绑定数据套接字失败: ", WSAGetLastError());
        return {};
    }
    if (listen(listener.get(), 1) == SOCKET_ERROR) {
        Diagnostics::printError("监听数据套接字失败: ", WSAGetLastError());
        return {};
    }
    int size = sizeof local;
    if (getsockname(listener.get(), reinterpret_cast<sockaddr *>(&local), &size) == SOCKET_ERROR) {
        Diagnostics::printError("获取本地端口失败: ", WSAGetLastError());
        return {};
    }
    port = ntohs(local.sin_port);
    Diagnostics::print("数据连接将使用端口: " + std::to_string(port));
    return listener;
}

bool receiveIntoFile(SOCKET data, const TimeBudget &time, FILE *file, int64_t expectedSize) {
    std::vector<char> chunk(65536);
    int64_t received = 0;
    for (;;) {
        const int count = receiveWithin(data, chunk.data(), chunk.size(), time.nextWait());
        if (count == SOCKET_ERROR)
            Diagnostics::printError("接收文件数据失败: ", WSAGetLastError());
        if (count <= 0)
            return count == 0;
        if (std::fwrite(chunk.data(), 1, static_cast<size_t>(count), file) != static_cast<size_t>(count))
            return false;
        received += count;
        if (expectedSize > 0)
            Diagnostics::printProgress(
                static_cast<int>(static_cast<double>(received) * 100.0 / static_cast<double>(expectedSize)));
    }
}

} // namespace

bool downloadActive(FtpSession &session, const std::string &remotePath, const std::string &localPath,
                    int64_t expectedSize) {
    uint16_t port = 0;
    UniqueSocket listener = listenForServer(session, port);
    if (!listener)
        return false;
    FtpReply reply = sendCommand(session, "PORT " + portArgument(session.localAddress, port));
    if (reply.code != 200) {
        Diagnostics::printReply("发送PORT命令失败: ", reply.text);
        return false;
    }
    reply = sendCommand(session, "RETR " + remotePath);
    if (reply.replyClass() != 1) {
        Diagnostics::printReply("开始下载失败: ", reply.text);
        return false;
    }
    UniqueSocket data = acceptWithin(listener.get(), session.time.nextWait());
    if (!data) {
        Diagnostics::printError("接受数据连接失败: ", WSAGetLastError());
        return false;
    }
    UniqueFile file(std::fopen(localPath.c_str(), "wb"));
    if (!file) {
        Diagnostics::printError("无法打开本地文件进行写入: " + localPath);
        return false;
    }
    Diagnostics::print("开始下载文件...");
    const bool received = receiveIntoFile(data.get(), session.time, file.get(), expectedSize);
    data.reset();
    listener.reset();
    const bool written = std::fclose(file.release()) == 0;
    reply = sendCommand(session, {});
    if (reply.replyClass() != 2) {
        Diagnostics::printReply("文件下载未完成: ", reply.text);
        return false;
    }
    return received && written;
}
