#include "release/Settings.h"

#include <charconv>
#include <istream>
#include <random>
#include <set>
#include <stdexcept>

namespace {

const std::string kByteOrderMark = "\xEF\xBB\xBF"; // as some editors put in front of UTF-8

std::string trimmed(const std::string &text) {
    const char *const blanks = " \t\r";
    const size_t start = text.find_first_not_of(blanks);
    return start == std::string::npos ? "" : text.substr(start, text.find_last_not_of(blanks) + 1 - start);
}

uint32_t parseNumber(const std::string &text, uint32_t smallest, uint32_t largest) {
    uint32_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size() || number < smallest || number > largest)
        throw std::invalid_argument("\"" + text + "\" is not a number from " + std::to_string(smallest) +
                                    " to " + std::to_string(largest));
    return number;
}

std::array<uint8_t, 8> parseKey(const std::string &text) {
    std::array<uint8_t, 8> key{};
    if (text.size() != 2 * key.size())
        throw std::invalid_argument("the key is not 16 hexadecimal digits");
    for (size_t i = 0; i < key.size(); ++i) {
        const char *digits = text.data() + 2 * i;
        if (std::from_chars(digits, digits + 2, key[i], 16).ptr != digits + 2)
            throw std::invalid_argument("the key is not 16 hexadecimal digits");
    }
    return key;
}

std::array<uint8_t, 8> randomKey() {
    std::random_device device;
    std::uniform_int_distribution<unsigned> anyByte(0, 255);
    std::array<uint8_t, 8> key{};
    for (uint8_t &byte : key)
        byte = static_cast<uint8_t>(anyByte(device));
    return key;
}

void apply(ReleaseSettings &settings, const std::string &name, const std::string &value) {
    if (name == "address")
        settings.config.server.address = value;
    else if (name == "port")
        settings.config.server.port = parseNumber(value, 1, 65535);
    else if (name == "user")
        settings.config.server.user = value;
    else if (name == "password")
        settings.config.server.password = value;
    else if (name == "folder")
        settings.config.folder = value;
    else if (name == "reserved")
        settings.config.reserved = parseNumber(value, 0, UINT32_MAX);
    else if (name == "key")
        settings.key = parseKey(value);
    else
        throw std::invalid_argument("unknown setting \"" + name + "\"");
}

} // namespace

ReleaseSettings readSettings(std::istream &text) {
    ReleaseSettings settings;
    settings.key = randomKey();
    settings.config.server.address = "0.0.0.0";
    std::set<std::string> names;
    std::string line;
    for (int number = 1; std::getline(text, line); ++number) {
        if (number == 1 && line.compare(0, kByteOrderMark.size(), kByteOrderMark) == 0)
            line.erase(0, kByteOrderMark.size());
        line = trimmed(line);
        if (line.empty() || line.front() == '#')
            continue;
        try {
            const size_t equals = line.find('=');
            if (equals == std::string::npos)
                throw std::invalid_argument("expected name = value");
            const std::string name = trimmed(line.substr(0, equals));
            if (!names.insert(name).second)
                throw std::invalid_argument("\"" + name + "\" stands there a second time");
            apply(settings, name, trimmed(line.substr(equals + 1)));
            makeServerConfig(settings.config, settings.key); // throws for what does not fit
        } catch (const std::invalid_argument &error) {
            throw std::invalid_argument("line " + std::to_string(number) + ": " + error.what());
        }
    }
    if (names.count("address") == 0)
        throw std::invalid_argument("there is no address");
    return settings;
}
