// main() of tests that need a QApplication, as the panel sets it up.
#include <gtest/gtest.h>
#include <QApplication>
#include <QFont>

int main(int argc, char **argv) {
    qputenv("QT_ENABLE_HIGHDPI_SCALING", "1");
    QApplication application(argc, argv);
    QApplication::setFont(QFont(QStringLiteral("Microsoft YaHei")));
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
