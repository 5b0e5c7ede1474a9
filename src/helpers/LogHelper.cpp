#include "helpers/LogHelper.h"

#include "helpers/AppendToFile.h"
#include "helpers/ProductSettings.h"
#include "helpers/Registry.h"
#include "helpers/UniqueFile.h"
#include "helpers/WinHandles.h"

#include <cstdarg>
#include <mutex>
#include <new>
#include <QString>
#include <windows.h>

namespace {

struct Settings {
    bool initialised = false;
    std::wstring logPath;
    FILE *persistentStream = nullptr; // when set: every write goes there, flushed and never closed
    bool traceEnabled = false;
    bool noPrefix = false;
    bool consoleColours = false;
    bool append = false; // whole-file writer: seek to the end instead of the start
    int32_t levelLow = 0;
    int32_t levelHigh = 0;
};

constexpr WORD kGreen = 2;
constexpr WORD kBrightRed = 12;
constexpr WORD kDefaultColour = 7;

std::mutex turn; // of the settings and of the file
Settings settings;

std::wstring temporaryFolder() {
    wchar_t folder[255];
    const DWORD length = GetTempPathW(255, folder);
    return length < 255 ? std::wstring(folder, length) : std::wstring();
}

// Formats with the Microsoft C runtime's rules for wide formats.
std::wstring formatted(const wchar_t *format, va_list arguments) {
    va_list again;
    va_copy(again, arguments);
    const int length = _vscwprintf(format, again);
    va_end(again);
    if (length <= 0)
        return {};
    std::wstring text(static_cast<size_t>(length) + 1, L'\0');
    _vsnwprintf(text.data(), text.size(), format, arguments);
    text.resize(static_cast<size_t>(length));
    return text;
}

std::wstring formatted(const wchar_t *format, ...) {
    va_list arguments;
    va_start(arguments, format);
    std::wstring text = formatted(format, arguments);
    va_end(arguments);
    return text;
}

QByteArray utf8(const std::wstring &text) {
    return QString::fromStdWString(text).toUtf8();
}

DWORD processOfThread(DWORD threadId) {
    const UniqueHandle thread(OpenThread(THREAD_QUERY_INFORMATION, FALSE, threadId));
    return thread ? GetProcessIdOfThread(thread.get()) : 65535;
}

std::wstring linePrefix(const char *sourceFile, uint32_t line, const char *function) {
    SYSTEMTIME now;
    GetLocalTime(&now);
    const DWORD threadId = GetCurrentThreadId();
    return formatted(L"%d %02d:%02d:%02d.%03d %d %S (%S:%d): ", processOfThread(threadId), now.wHour,
                     now.wMinute, now.wSecond, now.wMilliseconds, threadId, function, sourceFile, line);
}

void setConsoleColour(WORD attribute) {
    SetConsoleTextAttribute(GetStdHandle(STD_OUTPUT_HANDLE), attribute);
}

void writeLine(const char *sourceFile, uint32_t line, const char *function, bool isTrace,
               const std::wstring &message) {
    std::wstring text;
    if (!settings.noPrefix)
        text += linePrefix(sourceFile, line, function);
    if (isTrace)
        text += L"(TRACE) ";
    QByteArray bytes = utf8(text + message + L"\n");

    if (settings.consoleColours)
        setConsoleColour(isTrace ? kGreen : kBrightRed);
    if (settings.persistentStream) {
        std::fwrite(bytes.data(), 1, static_cast<size_t>(bytes.size()), settings.persistentStream);
        std::fflush(settings.persistentStream);
    } else {
        appendToFile(settings.logPath, bytes.replace("\n", "\r\n").toStdString()); // a text file
    }
    if (settings.consoleColours)
        setConsoleColour(kDefaultColour);
}

// An already enabled trace is never switched off here.
void readRegistrySettings() {
    const wchar_t *key = ProductSettings::kProductKey;
    if (Registry::ValueExists(key, L"EnableTrace") &&
        Registry::ReadStringValue(key, L"EnableTrace") == L"true")
        settings.traceEnabled = true;
    settings.levelLow = 0;
    settings.levelHigh = 0;
    if (!settings.traceEnabled)
        return;
    if (Registry::ValueExists(key, L"level_low"))
        settings.levelLow = static_cast<int32_t>(Registry::ReadDwordValue(key, L"level_low"));
    if (Registry::ValueExists(key, L"level_hi"))
        settings.levelHigh = static_cast<int32_t>(Registry::ReadDwordValue(key, L"level_hi"));
}

void initialiseOnce() {
    if (settings.initialised)
        return;
    settings.initialised = true;
    settings.logPath = LogFilePath();
    try {
        readRegistrySettings();
    } catch (const RegistryException &error) {
        // The place that this line names is the same in every version.
        writeLine("helpers/LogHelper", 69, "log", false, error.message());
    }
}

UniqueFile openFile(const wchar_t *path, const wchar_t *mode) {
    return UniqueFile(_wfopen(path, mode));
}

} // namespace

void LogWrite(const char *sourceFile, uint32_t line, const char *function, bool isTrace,
              const wchar_t *format, ...) {
    va_list arguments;
    va_start(arguments, format);
    try {
        const std::lock_guard<std::mutex> lock(turn);
        initialiseOnce();
        if (!isTrace || settings.traceEnabled)
            writeLine(sourceFile, line, function, isTrace, formatted(format, arguments));
    } catch (const std::bad_alloc &) { // the line is lost, as with any other failure
    }
    va_end(arguments);
}

void LogConfigure(FILE *stream, bool traceEnabled, bool noPrefix, bool consoleColours) {
    const std::lock_guard<std::mutex> lock(turn);
    settings.initialised = true;
    settings.persistentStream = stream;
    settings.traceEnabled = traceEnabled;
    settings.noPrefix = noPrefix;
    settings.consoleColours = consoleColours;
    if (settings.logPath.empty())
        settings.logPath = LogFilePath(); // with a null stream, lines go to the file
}

void LogReset() {
    const std::lock_guard<std::mutex> lock(turn);
    settings.initialised = false;
    settings.logPath.clear();
    settings.traceEnabled = false;
}

std::wstring LogFilePath() {
    const std::wstring folder = temporaryFolder();
    return folder.empty() ? folder : folder + L"QorSoundKit.log";
}

bool LogLevelEnabled(int32_t level) {
    const std::lock_guard<std::mutex> lock(turn);
    if (settings.levelLow == settings.levelHigh)
        return level == settings.levelLow;
    return settings.levelLow <= level && level <= settings.levelHigh;
}

void LogWriteTo(const wchar_t *path, const wchar_t *format, ...) {
    va_list arguments;
    va_start(arguments, format);
    const QByteArray text = utf8(formatted(format, arguments));
    va_end(arguments);
    WriteFileBytes(path, text.data(), static_cast<size_t>(text.size()));
}

int WriteFileBytes(const wchar_t *path, const void *bytes, size_t byteCount) {
    errno = 0;
    UniqueFile own = settings.persistentStream ? nullptr : openFile(path, L"wb");
    FILE *stream = own ? own.get() : settings.persistentStream;
    if (!stream)
        return errno;
    std::fseek(stream, 0, settings.append ? SEEK_END : SEEK_SET);
    const bool whole = std::fwrite(bytes, 1, byteCount, stream) == byteCount;
    const int result = own ? std::fclose(own.release()) : std::fflush(stream);
    return whole ? result : EOF;
}

void ReadFileBytes(const wchar_t *path, void *bytes, size_t byteCount) {
    if (const UniqueFile file = openFile(path, L"r"))
        std::fread(bytes, 1, byteCount, file.get());
}
