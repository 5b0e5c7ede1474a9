#include "ui/pages/PageTest.h"

#include <QCoreApplication>
#include <utility>

PageTest::PageTest() : recorder(DeviceRecorder::instance()) {
    recorder.reset();
    form.setupUi(&window);
}

void PageTest::settle() {
    QCoreApplication::sendPostedEvents();
    QCoreApplication::processEvents();
}

std::vector<std::string> PageTest::takeCalls() {
    return std::exchange(recorder.calls, {});
}

bool PageTest::shows(const QWidget *widget, const char *text) {
    return widget->styleSheet().contains(QLatin1String(text));
}

void PageTest::expectMarked(const char *pattern, int count, int marked, const char *mark,
                            const char *none) const {
    for (int number = 1; number <= count; ++number) {
        const QString name = QString(pattern).arg(number);
        const auto *button = window.findChild<QWidget *>(name);
        EXPECT_EQ(shows(button, mark), number == marked) << name.toStdString();
        EXPECT_EQ(shows(button, none), number != marked) << name.toStdString();
    }
}
