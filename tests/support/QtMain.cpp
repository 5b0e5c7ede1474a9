// main() of tests that need a QApplication, as the panel sets it up.
#include <gtest/gtest.h>
#include <QApplication>
#include <QFont>
#include <windows.h>

constexpr int kNoDesktop = 77; // tools/wine/run-test.sh then tries again

int main(int argc, char **argv) {
    if (!CreateWindowW(L"STATIC", L"", 0, 0, 0, 0, 0, nullptr, nullptr, nullptr, nullptr))
        return kNoDesktop;
    qputenv("QT_ENABLE_HIGHDPI_SCALING", "1");
    QApplication application(argc, argv);
    QApplication::setFont(QFont(QStringLiteral("Microsoft YaHei")));
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
