// The plain text from which the server configuration is made: lines "name = value", "#" starts a comment
// line.
#pragma once

#include "update/ServerConfig.h"

#include <array>
#include <iosfwd>

struct ReleaseSettings {
    ServerConfig config;
    std::array<uint8_t, 8> key{}; // random where the text names none
};

// Throws std::invalid_argument with the line's number for what cannot be understood, and for a missing
// address.
ReleaseSettings readSettings(std::istream &text);
