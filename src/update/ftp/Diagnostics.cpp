#include "update/ftp/Diagnostics.h"

#include <cstdio>
#include <string>

namespace {

// One write per message, so that messages of different threads do not mix.
void writeAll(FILE *stream, const std::string &text) {
    std::fwrite(text.data(), 1, text.size(), stream);
    std::fflush(stream);
}

} // namespace

namespace Diagnostics {

void print(std::string_view line) {
    writeAll(stdout, std::string(line) + "\n");
}

void printError(std::string_view text, std::string_view detail) {
    writeAll(stderr, std::string(text).append(detail) + "\n");
}

void printError(std::string_view text, int errorCode) {
    printError(text, std::to_string(errorCode));
}

void printProgress(int percent) {
    writeAll(stdout, "\r下载进度: " + std::to_string(percent) + "%");
}

} // namespace Diagnostics
