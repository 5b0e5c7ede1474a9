// The FTP client's messages for whoever watches the standard streams: UTF-8, one line each.
#pragma once

#include <string_view>

namespace Diagnostics {

void print(std::string_view line);                              // standard output
void printError(std::string_view text);                         // standard error
void printError(std::string_view text, int errorCode);          // text, then the code in decimal
void printReply(std::string_view text, std::string_view reply); // text, then the server's reply
void printProgress(int percent); // over the last progress line, without a line end

} // namespace Diagnostics
