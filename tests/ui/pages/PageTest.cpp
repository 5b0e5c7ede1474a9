#include "ui/pages/PageTest.h"

#include <QApplication>

PageTest::PageTest() : recorder(DeviceRecorder::instance()) {
    recorder.reset();
    form.setupUi(&window);
}

void PageTest::settle() {
    QCoreApplication::sendPostedEvents();
    QCoreApplication::processEvents();
}

int main(int argc, char **argv) {
    QApplication application(argc, argv);
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
