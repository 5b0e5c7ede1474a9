// Run by premature_end_test only, which looks at what tools/wine/run-test.sh makes of it.
#include "window/WindowTest.h"

#include <QPushButton>

namespace {

using PrematureEndTest = WindowTest;

TEST_F(PrematureEndTest, DISABLED_TheCloseButtonEndsTheProcess) {
    ProductSettings::writeDword(L"isAddSysicon", 0);
    start(1);
    child<QPushButton>(*window, "pushButton").click();
}

} // namespace
