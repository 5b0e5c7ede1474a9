// Where an FTP server is and how to log in.
#pragma once

#include <cstdint>
#include <string>

struct FtpServer {
    std::string address; // dotted IPv4
    uint32_t port = 21;
    std::string user;
    std::string password;
};
