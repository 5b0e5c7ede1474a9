// Process-wide text log "QorSoundKit.log" in the temporary folder, one line per call, and whole-file helpers.
// All functions may be called from any thread. Every line is one open-append-close cycle that waits for no
// other program; file failures are silent, the line is lost.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string>

// Writes one line: "<pid> hh:mm:ss.mmm <tid> function (file:line): message". format is a wide printf format
// of the Microsoft C runtime (%s wide, %S narrow). Trace lines are dropped unless the registry switched
// tracing on.
void LogWrite(const char *sourceFile, uint32_t line, const char *function, bool isTrace,
              const wchar_t *format, ...);

// Log to an already open stream (flushed, never closed) or to the file (null), with the given switches.
void LogConfigure(FILE *stream, bool traceEnabled, bool noPrefix, bool consoleColours);
void LogReset();
// Empty when there is no temporary folder; then lines are lost.
std::wstring LogFilePath();

// Window of trace levels from the registry; equal bounds enable exactly that level.
bool LogLevelEnabled(int32_t level);

void LogWriteTo(const wchar_t *path, const wchar_t *format, ...);

// Writes all bytes, replacing the file. Returns the open error (errno), else the result of the closing
// flush: 0, or EOF when not all bytes could be written.
int WriteFileBytes(const wchar_t *path, const void *bytes, size_t byteCount);
// Reads up to byteCount bytes in text mode; a file that cannot be opened leaves the buffer untouched.
void ReadFileBytes(const wchar_t *path, void *bytes, size_t byteCount);

// QOR_LOG(L"...%s", ...): an ordinary line that names its own place; QOR_TRACE: a trace line.
#define QOR_LOG(...) LogWrite(__FILE_NAME__, static_cast<uint32_t>(__LINE__), __func__, false, __VA_ARGS__)
#define QOR_TRACE(...) LogWrite(__FILE_NAME__, static_cast<uint32_t>(__LINE__), __func__, true, __VA_ARGS__)
