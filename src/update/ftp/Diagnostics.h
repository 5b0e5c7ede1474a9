// The FTP client's messages for whoever watches the standard streams: UTF-8, one line each.
#pragma once

#include <string_view>

namespace Diagnostics {

void print(std::string_view line);                                    // standard output
void printError(std::string_view text, std::string_view detail = {}); // standard error
void printError(std::string_view text, int errorCode);                // in decimal
void printProgress(int percent); // over the last progress line, without a line end

} // namespace Diagnostics
