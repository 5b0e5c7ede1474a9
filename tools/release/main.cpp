#include "release/ReleaseTool.h"

#include <iostream>

int wmain(int count, wchar_t **arguments) {
    return runReleaseTool({arguments + 1, arguments + count}, std::cout, std::cerr);
}
