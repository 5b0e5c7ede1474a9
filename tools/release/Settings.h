// The plain text from which the server configuration is made: lines "name = value"; a line that begins with
// "#" is a comment.
#pragma once

#include "update/ServerConfig.h"

#include <array>
#include <iosfwd>

struct ReleaseSettings {
    ServerConfig config;
    std::array<uint8_t, 8> key{}; // random where the text names none
};

// Throws std::invalid_argument, with the line's number for a line that cannot be understood or does not fit
// into the configuration, and for a missing address.
ReleaseSettings readSettings(std::istream &text);
