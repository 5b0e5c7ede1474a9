// ftp.exe PORT REMOTE_PATH: downloads the file from 127.0.0.1 once into memory and prints the seconds it
// took.
#include "update/FtpTransfers.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>

int main(int count, char **arguments) {
    if (count != 3)
        return 2;
    FtpServer server;
    server.address = "127.0.0.1";
    server.port = static_cast<uint32_t>(std::atoi(arguments[1]));
    server.user = "maker";
    server.password = "secret";
    DownloadBuffer buffer;
    int reports = 0;
    const auto countReport = [](uint32_t, int32_t, uintptr_t context) {
        ++*reinterpret_cast<int *>(context);
    };
    const auto start = std::chrono::steady_clock::now();
    const int32_t result = downloadToMemory(server, arguments[2], buffer, nullptr,
                                            {countReport, reinterpret_cast<uintptr_t>(&reports)});
    const std::chrono::duration<double> time = std::chrono::steady_clock::now() - start;
    if (result != 1) {
        std::fprintf(stderr, "the download failed: %d\n", static_cast<int>(result));
        return 1;
    }
    std::printf("\nseconds %.6f bytes %lld reports %d\n", time.count(), static_cast<long long>(buffer.size()),
                reports);
    return 0;
}
