#include "update/FtpControl.h"

#include "update/Diagnostics.h"

namespace {

constexpr size_t kReplyLimit = 1023;

bool expectCode(SOCKET control, const std::string &command, int32_t code, const char *failureText) {
    const FtpReply reply = sendCommand(control, command);
    if (reply.code == code)
        return true;
    Diagnostics::printReply(failureText, reply.text);
    return false;
}

const char *explainConnectError(int error) {
    switch (error) {
    case WSAETIMEDOUT:
        return " (连接超时)";
    case WSAECONNREFUSED:
        return " (连接被拒绝)";
    default:
        return "";
    }
}

} // namespace

UniqueSocket connectTcp(const std::string &serverIp, uint32_t port, uint32_t timeoutMs) {
    UniqueSocket connection(socket(AF_INET, SOCK_STREAM, IPPROTO_TCP));
    if (!connection) {
        Diagnostics::printError("创建套接字失败: ", WSAGetLastError());
        return {};
    }
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(static_cast<u_short>(port));
    if (inet_pton(AF_INET, serverIp.c_str(), &address.sin_addr) != 1) {
        Diagnostics::printError("无效的服务器IP地址: ", WSAGetLastError());
        return {};
    }
    const std::string place = serverIp + ":" + std::to_string(port);
    Diagnostics::print("尝试连接到 " + place + "...");
    if (connect(connection.get(), reinterpret_cast<const sockaddr *>(&address), sizeof address) ==
        SOCKET_ERROR) {
        const int error = WSAGetLastError();
        Diagnostics::printError("连接失败: " + std::to_string(error) + explainConnectError(error));
        return {};
    }
    setSocketTimeout(connection.get(), timeoutMs);
    Diagnostics::print("成功连接到 " + place);
    return connection;
}

FtpReply sendCommand(SOCKET control, const std::string &command) {
    if (!command.empty()) {
        const std::string line = command + "\r\n";
        if (send(control, line.data(), static_cast<int>(line.size()), 0) == SOCKET_ERROR) {
            Diagnostics::printError("发送命令失败: ", WSAGetLastError());
            return {};
        }
    }
    char received[kReplyLimit + 1] = {};
    const int count = recv(control, received, kReplyLimit, 0);
    if (count == SOCKET_ERROR) {
        Diagnostics::printError("接收响应失败: ", WSAGetLastError());
        return {};
    }
    FtpReply reply;
    reply.text.assign(received, static_cast<size_t>(count));
    if (const auto code = parseReplyCode(reply.text))
        reply.code = *code;
    else
        Diagnostics::printError("解析响应代码失败");
    return reply;
}

bool login(SOCKET control, const std::string &user, const std::string &password) {
    return expectCode(control, "USER " + user, 331, "用户名验证失败: ") &&
           expectCode(control, "PASS " + password, 230, "密码验证失败: ");
}

bool setBinaryType(SOCKET control) {
    return expectCode(control, "TYPE I", 200, "设置二进制模式失败: ");
}

int64_t getFileSize(SOCKET control, const std::string &remotePath) {
    const FtpReply reply = sendCommand(control, "SIZE " + remotePath);
    if (reply.code != 213) {
        Diagnostics::printReply("获取文件大小失败: ", reply.text);
        return -1;
    }
    const auto size = parseFileSize(reply.text);
    if (!size)
        Diagnostics::printError("解析文件大小失败");
    return size.value_or(-1);
}

std::string getFileTime(SOCKET control, const std::string &remotePath) {
    const FtpReply reply = sendCommand(control, "MDTM " + remotePath);
    std::string time = reply.code == 213 ? parseFileTime(reply.text) : std::string();
    if (time.empty())
        Diagnostics::printReply("获取文件修改时间失败: ", reply.text);
    return time;
}
