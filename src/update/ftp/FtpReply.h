// What the client reads out of the server's replies (RFC 959, SIZE and MDTM of RFC 3659). Plain functions on
// bytes that come from outside: any text gives a result.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

struct FtpReply {
    int32_t code = 0;
    std::string text; // the bytes of one receive, line end included

    int32_t replyClass() const { return code / 100; }
};

// The decimal number at the start of text: blanks, a sign and trailing text are allowed. Nothing when there
// are no digits or the number does not fit in 32 bits.
std::optional<int32_t> leadingNumber(std::string_view text);

// The number in the reply's first three characters.
std::optional<int32_t> parseReplyCode(std::string_view text);

// Whether the text is a reply to its end: one line, or "ddd-..." and lines up to one that begins with the
// same code and a blank.
bool isWholeReply(std::string_view text);

// The port of a PASV reply "227 ... (h1,h2,h3,h4,p1,p2)"; -1 without "(", -2 without ")" or without two
// numbers that make a port. The host numbers are not looked at.
int32_t parsePassivePort(std::string_view text);

// The size after the code and its blank; nothing when it is no number, negative, or more than 2^31 - 1.
std::optional<int64_t> parseFileSize(std::string_view text);

// "YYYYMMDDhhmmss" after the code and its blank as "YYYY-MM-DD hh:mm:ss"; empty when it is something else.
std::string parseFileTime(std::string_view text);

// received * 100 / expected in 32-bit signed arithmetic that wraps around (so that it turns negative
// from 21.5 MB on, for a while); 0 when nothing is expected.
int32_t progressPercent(uint64_t received, uint64_t expected);

// "h1,h2,h3,h4,p1,p2" of a PORT command; empty when the address is not four numbers.
std::string portArgument(const std::string &dottedAddress, uint16_t port);
