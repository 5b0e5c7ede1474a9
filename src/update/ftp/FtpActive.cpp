#include "update/ftp/FtpActive.h"

#include "helpers/UniqueFile.h"
#include "update/ftp/Diagnostics.h"
#include "update/ftp/FtpControl.h"
#include "update/ftp/SocketWaits.h"

namespace {

// A listening socket on a free port of the session's local address; empty after a failure.
UniqueSocket listenForServer(const FtpSession &session, uint16_t &port) {
    const auto fail = [](const char *text) {
        Diagnostics::printError(text, WSAGetLastError());
        return UniqueSocket();
    };
    UniqueSocket listener(socket(AF_INET, SOCK_STREAM, IPPROTO_TCP));
    if (!listener)
        return fail("创建数据套接字失败: ");
    sockaddr_in local{};
    local.sin_family = AF_INET;
    inet_pton(AF_INET, session.localAddress.c_str(), &local.sin_addr);
    if (bind(listener.get(), reinterpret_cast<const sockaddr *>(&local), sizeof local) == SOCKET_ERROR)
        return fail("绑定数据套接字失败: ");
    if (listen(listener.get(), 1) == SOCKET_ERROR)
        return fail("监听数据套接字失败: ");
    int size = sizeof local;
    if (getsockname(listener.get(), reinterpret_cast<sockaddr *>(&local), &size) == SOCKET_ERROR)
        return fail("获取本地端口失败: ");
    port = ntohs(local.sin_port);
    Diagnostics::print("数据连接将使用端口: " + std::to_string(port));
    return listener;
}

// False when the connection ends with an error. The file's own errors stay with the file.
bool receiveIntoFile(SOCKET data, const TimeBudget &time, FILE *file, int64_t expectedSize) {
    size_t received = 0;
    const bool isComplete = receiveAll(data, time, [&](std::string_view bytes) {
        std::fwrite(bytes.data(), 1, bytes.size(), file);
        received += bytes.size();
        if (expectedSize > 0)
            Diagnostics::printProgress(
                static_cast<int>(static_cast<double>(received) * 100.0 / static_cast<double>(expectedSize)));
    });
    if (!isComplete)
        Diagnostics::printError("接收文件数据失败: ", WSAGetLastError());
    return isComplete;
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
        Diagnostics::printError("发送PORT命令失败: ", reply.text);
        return false;
    }
    reply = sendCommand(session, "RETR " + remotePath);
    if (reply.replyClass() != 1) {
        Diagnostics::printError("开始下载失败: ", reply.text);
        return false;
    }
    UniqueSocket data = acceptWithin(listener.get(), session.time.nextWait());
    if (!data) {
        Diagnostics::printError("接受数据连接失败: ", WSAGetLastError());
        return false;
    }
    UniqueFile file(std::fopen(localPath.c_str(), "wb"));
    if (!file) {
        Diagnostics::printError("无法打开本地文件进行写入: ", localPath);
        return false;
    }
    Diagnostics::print("开始下载文件...");
    const bool received = receiveIntoFile(data.get(), session.time, file.get(), expectedSize);
    data.reset();
    listener.reset();
    const bool failed = std::ferror(file.get()) != 0;
    const bool written = std::fclose(file.release()) == 0 && !failed;
    reply = sendCommand(session, {});
    if (reply.replyClass() != 2) {
        Diagnostics::printError("文件下载未完成: ", reply.text);
        return false;
    }
    return received && written;
}
