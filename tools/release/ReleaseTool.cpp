#include "release/ReleaseTool.h"

#include "release/Settings.h"
#include "update/Crc32.h"
#include "update/ServerConfig.h"
#include "update/UpdateInfo.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <ostream>
#include <stdexcept>

namespace {

namespace fs = std::filesystem;
using Paths = std::vector<fs::path>;

constexpr char kHelp[] = R"(Files that the panel's software update reads.

  qor_release netcfg SETTINGS FILE
      Writes the server configuration (qor_netcfg.fsc of the installation folder) from a text of lines
      "name = value": address (dotted IPv4), port (21), user, password, folder (on the server), reserved (a
      32-bit number, 0), key (16 hexadecimal digits; random where it is missing). A line that begins with "#" is a
      comment.

  qor_release updateinfo FILE INSTALLER...
      Writes the update information (qor_updateinfo.dat on the server) that lists these installers by their CRC.
      A panel whose installed package is listed is current; any other is offered the server's setup.exe, which must
      be listed as well. So list the newest setup.exe, and an older one only while its users are to stay with it.

  qor_release check CONFIGURATION INFORMATION [INSTALLER...]
      Reads both files with the panel's own readers, says what they hold, and checks that the installers are listed.

Exit code: 0 all well, 1 a file is missing or wrong, 2 wrong command line.
)";

struct UsageError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

std::string shown(const fs::path &path) {
    return path.u8string();
}

std::string readFile(const fs::path &path) {
    std::ifstream file(path, std::ios::binary);
    if (!file)
        throw std::runtime_error("cannot read " + shown(path));
    return std::string(std::istreambuf_iterator<char>(file), {});
}

void writeFile(const fs::path &path, const void *bytes, size_t count) {
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    // cppcheck-suppress invalidFunctionArg ; an empty file is a file
    file.write(static_cast<const char *>(bytes), static_cast<std::streamsize>(count));
    file.close();
    if (!file)
        throw std::runtime_error("cannot write " + shown(path));
}

uint32_t installerCrc(const fs::path &installer) {
    uint32_t crc = 0;
    if (fileCrc(installer, crc) < 1)
        throw std::runtime_error(shown(installer) + " is missing or empty");
    return crc;
}

int writeConfiguration(const Paths &files, std::ostream &out) {
    if (files.size() != 2)
        throw UsageError("netcfg needs SETTINGS and FILE");
    std::ifstream text(files[0]);
    if (!text)
        throw std::runtime_error("cannot read " + shown(files[0]));
    try {
        const ReleaseSettings settings = readSettings(text);
        const ServerConfigRecord record = makeServerConfig(settings.config, settings.key);
        writeFile(files[1], record.data(), record.size());
    } catch (const std::invalid_argument &error) {
        throw std::runtime_error(shown(files[0]) + ": " + error.what());
    }
    out << "wrote " << shown(files[1]) << "\n";
    return 0;
}

int writeInformation(const Paths &files, std::ostream &out) {
    if (files.size() < 2)
        throw UsageError("updateinfo needs FILE and at least one INSTALLER");
    std::string text;
    for (auto installer = files.begin() + 1; installer != files.end(); ++installer) {
        const std::string entry = installerEntry(installerCrc(*installer));
        text += entry + "\r\n";
        out << entry << "  " << shown(*installer) << "\n";
    }
    writeFile(files[0], text.data(), text.size());
    out << "wrote " << shown(files[0]) << "\n";
    return 0;
}

void checkConfiguration(const fs::path &file, std::ostream &out) {
    ServerConfigRecord record;
    switch (loadServerConfig(file, record)) {
    case 1:
        break;
    case -2:
        throw std::runtime_error(shown(file) + " has not " + std::to_string(record.size()) + " bytes");
    default:
        throw std::runtime_error(shown(file) + (fs::exists(file) ? " is damaged (CRC)" : " is missing"));
    }
    const ServerConfig config = getServerConfig(record);
    out << "server " << config.server.address << ":" << config.server.port << ", user \""
        << config.server.user << "\", " << (config.server.password.empty() ? "no password" : "with password")
        << ", folder \"" << config.folder << "\", reserved " << config.reserved << "\n";
}

std::ptrdiff_t lineOf(const std::string &bytes, size_t at) {
    return 1 + std::count(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(at), '\n');
}

std::wstring checkInformation(const fs::path &file, std::ostream &out) {
    const std::string bytes = readFile(file);
    const std::wstring text = updateInformationText(bytes.data(), bytes.size());
    if (text.size() != bytes.size())
        throw std::runtime_error(shown(file) + " holds a NUL byte, behind which the panel sees nothing");
    const std::string anyEntry = installerEntry(0);
    const std::string marker = anyEntry.substr(0, anyEntry.size() - 8);
    size_t entries = 0;
    for (size_t at = 0; (at = bytes.find(marker, at)) != std::string::npos; at += marker.size()) {
        const std::string digits = bytes.substr(at + marker.size(), 8);
        if (digits.size() == 8 && digits.find_first_not_of("0123456789abcdef") == std::string::npos)
            ++entries;
        else
            throw std::runtime_error(shown(file) + ": line " + std::to_string(lineOf(bytes, at)) +
                                     ": not eight lower-case hexadecimal digits");
    }
    if (entries == 0)
        throw std::runtime_error(shown(file) + " lists no installer");
    out << entries << (entries == 1 ? " installer is" : " installers are") << " listed\n";
    return text;
}

int checkPair(const Paths &files, std::ostream &out) {
    if (files.size() < 2)
        throw UsageError("check needs CONFIGURATION and INFORMATION");
    checkConfiguration(files[0], out);
    const std::wstring information = checkInformation(files[1], out);
    bool all = true;
    for (auto installer = files.begin() + 2; installer != files.end(); ++installer) {
        const bool listed = listsInstaller(information, installerCrc(*installer));
        out << shown(*installer) << (listed ? " is listed\n" : " is NOT listed\n");
        all = all && listed;
    }
    return all ? 0 : 1;
}

} // namespace

int runReleaseTool(const Paths &arguments, std::ostream &out, std::ostream &errors) {
    try {
        const std::string command = arguments.empty() ? "" : shown(arguments.front());
        if (command == "--help" || command == "-h") {
            out << kHelp;
            return 0;
        }
        const Paths files(arguments.begin() + (arguments.empty() ? 0 : 1), arguments.end());
        if (command == "netcfg")
            return writeConfiguration(files, out);
        if (command == "updateinfo")
            return writeInformation(files, out);
        if (command == "check")
            return checkPair(files, out);
        throw UsageError(command.empty() ? "no command" : "unknown command \"" + command + "\"");
    } catch (const UsageError &error) {
        errors << "error: " << error.what() << "; --help says more\n";
        return 2;
    } catch (const std::exception &error) {
        errors << "error: " << error.what() << "\n";
        return 1;
    }
}
