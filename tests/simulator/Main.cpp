// Without arguments: the tests. With an option of ProcessTest.h: the second process of a test.
#include "simulator/ProcessTest.h"
#include "simulator/SimulatorLibrary.h"

#include <shellapi.h>

int main(int argc, char **argv) {
    int count = 0;
    wchar_t **arguments = CommandLineToArgvW(GetCommandLineW(), &count);
    if (arguments && count == 3 && std::wstring(arguments[1]) == kClaimOption)
        return SimulatorLibrary().isAlreadyRun(arguments[2]);
    if (arguments && count == 3 && std::wstring(arguments[1]) == kStopOption)
        return SimulatorLibrary().killTask(arguments[2]) + kStillRunning;
    LocalFree(arguments);
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
