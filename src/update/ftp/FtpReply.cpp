#include "update/ftp/FtpReply.h"

#include <algorithm>
#include <charconv>
#include <cstdio>

namespace {

constexpr size_t kCodeAndBlank = 4;

std::string_view afterCode(std::string_view text) {
    return text.size() > kCodeAndBlank ? text.substr(kCodeAndBlank) : std::string_view();
}

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

} // namespace

std::optional<int32_t> leadingNumber(std::string_view text) {
    const size_t start = text.find_first_not_of(" \t\r\n\v\f");
    if (start == std::string_view::npos)
        return std::nullopt;
    text.remove_prefix(start);
    if (text.front() == '+') {
        text.remove_prefix(1);
        if (text.find_first_of("0123456789") != 0) // no second sign
            return std::nullopt;
    }
    int32_t number = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), number);
    return result.ec == std::errc() ? std::optional(number) : std::nullopt;
}

std::optional<int32_t> parseReplyCode(std::string_view text) {
    return leadingNumber(text.substr(0, 3));
}

bool isWholeReply(std::string_view text) {
    if (text.empty() || text.back() != '\n')
        return false;
    if (text.size() < kCodeAndBlank || text[3] != '-')
        return true;
    const std::string_view lines = text.substr(0, text.size() - 1);
    const std::string_view lastLine = lines.substr(lines.find_last_of('\n') + 1);
    return lastLine.substr(0, kCodeAndBlank) == std::string(text.substr(0, 3)) + ' ';
}

int32_t parsePassivePort(std::string_view text) {
    const size_t open = text.find('(');
    if (open == std::string_view::npos)
        return -1;
    const size_t close = text.find(')', open);
    if (close == std::string_view::npos)
        return -2;

    std::string high, low;
    int commas = 0;
    for (char c : text.substr(open + 1, close - open - 1)) {
        if (c == ',')
            ++commas;
        else if (commas == 4)
            high += c;
        else if (commas >= 5)
            low += c;
    }
    const auto p1 = leadingNumber(high), p2 = leadingNumber(low);
    if (!p1 || !p2)
        return -2;
    const int64_t port = int64_t{*p1} * 256 + *p2;
    return port >= 0 && port <= UINT16_MAX ? static_cast<int32_t>(port) : -2;
}

std::optional<int64_t> parseFileSize(std::string_view text) {
    const auto size = leadingNumber(afterCode(text));
    return size && *size >= 0 ? std::optional<int64_t>(*size) : std::nullopt;
}

std::string parseFileTime(std::string_view text) {
    const std::string_view time = afterCode(text).substr(0, 14);
    if (time.size() < 14 || !std::all_of(time.begin(), time.end(), isDigit))
        return {};
    std::string result(time.substr(0, 4));
    const char separators[] = {'-', '-', ' ', ':', ':'};
    for (size_t i = 0; i < std::size(separators); ++i)
        (result += separators[i]) += time.substr(4 + 2 * i, 2);
    return result;
}

int32_t progressPercent(uint64_t received, uint64_t expected) {
    const auto product = static_cast<int32_t>(static_cast<uint32_t>(received) * 100u);
    const auto divisor = static_cast<int32_t>(static_cast<uint32_t>(expected));
    if (divisor == 0)
        return 0;
    // In 64 bits, since the quotient of -2^31 and -1 is 2^31.
    return static_cast<int32_t>(int64_t{product} / divisor);
}

std::string portArgument(const std::string &dottedAddress, uint16_t port) {
    int h1, h2, h3, h4;
    if (std::sscanf(dottedAddress.c_str(), "%d.%d.%d.%d", &h1, &h2, &h3, &h4) != 4)
        return {};
    const int numbers[] = {h1, h2, h3, h4, port / 256, port % 256};
    std::string text;
    for (int number : numbers)
        (text += text.empty() ? "" : ",") += std::to_string(number);
    return text;
}
