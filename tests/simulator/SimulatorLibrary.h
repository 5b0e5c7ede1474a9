// The simulated device-control library as the panel sees it: loaded from beside the executable, its entry
// points by name. Also the registry key and the journal that stand behind it.
#pragma once

#include "device/DeviceApi.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>
#include <windows.h>

class SimulatorLibrary {
public:
    SimulatorLibrary();
    ~SimulatorLibrary();
    SimulatorLibrary(const SimulatorLibrary &) = delete;
    SimulatorLibrary &operator=(const SimulatorLibrary &) = delete;

    HMODULE module() const { return module_; }

    int32_t (*init)(uint32_t);
    int32_t (*getDeviceCount)(uint32_t);
    int32_t (*getDeviceInfo)(int32_t, void *, uint32_t);
    int32_t (*setDeviceProperty)(void *, int32_t, void *, uint32_t);
    int32_t (*releaseDeviceInfo)(void *, uint32_t);
    int32_t (*execUsbEncrypt)(uint32_t, uint32_t *, uint32_t *, uint32_t *, uint32_t *);
    int32_t (*hidTransData)(uint32_t, uint32_t, uint32_t, uint32_t, uint32_t, const uint8_t *, uint8_t *);
    int32_t (*startTask)(const wchar_t *, const wchar_t *, int32_t, const wchar_t *);
    int32_t (*killTask)(const wchar_t *);
    int32_t (*isTaskRunning)(const wchar_t *);
    int32_t (*getVolum)(int32_t, int32_t);
    int32_t (*setVolum)(int32_t, int32_t, int32_t);
    int32_t (*setMasterMute)(int32_t, int32_t);
    int32_t (*isAlreadyRun)(const wchar_t *);
    int32_t (*isRunningAsAdmin)();
    int32_t (*restartAsAdmin)();

private:
    template<typename Function>
    void resolve(Function &function, const char *name);

    HMODULE module_;
};

constexpr uint32_t kKey = DeviceApi::kAccessKey;

// A fresh simulator for each test: an empty registry key and a journal of its own.
class SimulatorTest : public testing::Test {
protected:
    SimulatorTest();
    ~SimulatorTest() override;

    void setKnob(const wchar_t *name, uint32_t value);
    void setText(const wchar_t *name, const std::wstring &text);
    void setBytes(const wchar_t *name, const std::vector<uint8_t> &bytes);
    std::vector<uint8_t> storedBytes(const wchar_t *name);

    // Lines of the journal, without time, process and thread, and without line ends.
    std::vector<std::string> journal();
    std::string lastLine();
    std::wstring journalPath() const { return folder_ + L"\\journal.txt"; }

    std::wstring folder_; // an existing empty folder of the test's own
};

std::string readFile(const std::wstring &path);
void writeFile(const std::wstring &path, const std::string &bytes);
