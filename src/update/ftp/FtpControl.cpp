#include "update/ftp/FtpControl.h"

#include "update/ftp/Diagnostics.h"
#include "update/ftp/SocketWaits.h"

namespace {

constexpr size_t kReplyLimit = 1023;

bool expectCode(FtpSession &session, const std::string &command, int32_t code, const char *failureText) {
    const FtpReply reply = sendCommand(session, command);
    if (reply.code == code)
        return true;
    Diagnostics::printError(failureText, reply.text);
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

// One receive of at most limit bytes, appended to text; false when nothing came.
bool receiveInto(FtpSession &session, std::string &text, size_t limit) {
    char received[kReplyLimit];
    const int count = receiveWithin(session.control.get(), received, limit, session.time.nextWait());
    if (count == SOCKET_ERROR)
        Diagnostics::printError("接收响应失败: ", WSAGetLastError());
    session.answers = count > 0;
    if (count > 0)
        text.append(received, static_cast<size_t>(count));
    return count != SOCKET_ERROR;
}

FtpReply replyOf(std::string text) {
    const auto code = parseReplyCode(text);
    if (!code)
        Diagnostics::printError("解析响应代码失败");
    return {code.value_or(0), std::move(text)};
}

} // namespace

UniqueSocket connectTcp(const std::string &serverIp, uint32_t port, const TimeBudget &time) {
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
    if (!connectWithin(connection.get(), address, time.nextWait())) {
        const int error = WSAGetLastError();
        Diagnostics::printError("连接失败: " + std::to_string(error) + explainConnectError(error));
        return {};
    }
    Diagnostics::print("成功连接到 " + place);
    return connection;
}

bool sendLine(FtpSession &session, const std::string &command) {
    // A command is less than the system takes at once.
    if (sendWithin(session.control.get(), command + "\r\n", session.time.nextWait()) != SOCKET_ERROR)
        return true;
    Diagnostics::printError("发送命令失败: ", WSAGetLastError());
    session.answers = false;
    return false;
}

FtpReply sendCommand(FtpSession &session, const std::string &command) {
    std::string text;
    if ((!command.empty() && !sendLine(session, command)) || !receiveInto(session, text, kReplyLimit))
        return {};
    return replyOf(std::move(text));
}

FtpReply receiveWholeReply(FtpSession &session) {
    std::string text;
    while (!isWholeReply(text) && text.size() < kReplyLimit) {
        const size_t before = text.size();
        if (!receiveInto(session, text, 1)) // one byte, since what follows the reply is another one
            return {};
        if (text.size() == before)
            break;
    }
    return replyOf(std::move(text));
}

bool login(FtpSession &session, const std::string &user, const std::string &password) {
    return expectCode(session, "USER " + user, 331, "用户名验证失败: ") &&
           expectCode(session, "PASS " + password, 230, "密码验证失败: ");
}

bool setBinaryType(FtpSession &session) {
    return expectCode(session, "TYPE I", 200, "设置二进制模式失败: ");
}

int64_t getFileSize(FtpSession &session, const std::string &remotePath) {
    const FtpReply reply = sendCommand(session, "SIZE " + remotePath);
    if (reply.code != 213) {
        Diagnostics::printError("获取文件大小失败: ", reply.text);
        return -1;
    }
    const auto size = parseFileSize(reply.text);
    if (!size)
        Diagnostics::printError("解析文件大小失败");
    return size.value_or(-1);
}

std::string getFileTime(FtpSession &session, const std::string &remotePath) {
    const FtpReply reply = sendCommand(session, "MDTM " + remotePath);
    std::string time = reply.code == 213 ? parseFileTime(reply.text) : std::string();
    if (time.empty())
        Diagnostics::printError("获取文件修改时间失败: ", reply.text);
    return time;
}
