// Without arguments: the tests. With "--claim NAME": a second process that asks whether NAME is taken and
// ends with the answer as its exit code.
#include "simulator/ProcessTest.h"
#include "simulator/SimulatorLibrary.h"

#include <shellapi.h>

int main(int argc, char **argv) {
    int count = 0;
    wchar_t **arguments = CommandLineToArgvW(GetCommandLineW(), &count);
    if (arguments && count == 3 && std::wstring(arguments[1]) == kClaimOption)
        return SimulatorLibrary().isAlreadyRun(arguments[2]);
    LocalFree(arguments);
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
