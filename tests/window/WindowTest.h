// The whole main window on a recorded device, with translation files that a test may change, and a way to act
// while one of its dialogs runs an event loop of its own.
#pragma once

#include "helpers/ProductSettings.h"
#include "helpers/Registry.h"
#include "support/DeviceRecorder.h"
#include "window/demo.h"

#include <functional>
#include <gtest/gtest.h>
#include <QDialog>
#include <QDir>
#include <QTest>
#include <QTimer>

class WindowTest : public testing::Test {
protected:
    WindowTest() {
        recorder.reset();
        QDir().mkpath(translationFile(""));
        for (const char *name : {"ts_zh.qm", "ts_en.qm"}) {
            QFile::remove(translationFile(name));
            EXPECT_TRUE(QFile::copy(QStringLiteral("Z:" QOR_QM_DIR "/") + name, translationFile(name)));
        }
        if (Registry::KeyExists(ProductSettings::kProductKey))
            Registry::DeleteKey(ProductSettings::kProductKey);
        Registry::CreateKey(ProductSettings::kProductKey);
    }

    // Beside the program, a copy of the built one.
    static QString translationFile(const char *name) {
        return QCoreApplication::applicationDirPath() + "/translations/" + name;
    }

    void start(uint32_t language) {
        window.reset();
        ProductSettings::writeDword(L"language", language);
        window = std::make_unique<demo>();
        window->show();
        QTest::qWait(150); // the re-layout after construction
    }

    // Calls `open`, which must run a dialog, and `act` once it is on the screen. A dialog that `act` leaves
    // open is closed.
    void whileDialogRuns(const std::function<void()> &open, const std::function<void(QDialog &)> &act) {
        bool acted = false;
        QTimer::singleShot(0, window.get(), [&] {
            QTest::qWait(20);
            const QList<QDialog *> dialogs = window->findChildren<QDialog *>();
            ASSERT_EQ(dialogs.size(), 1);
            acted = true;
            act(*dialogs.first());
            dialogs.first()->close();
        });
        open();
        EXPECT_TRUE(acted) << "returned without running a dialog";
        EXPECT_TRUE(window->findChildren<QDialog *>().isEmpty()) << "the dialog was not deleted";
    }

    template<typename Widget>
    static Widget &child(QWidget &parent, const char *name) {
        auto *found = parent.findChild<Widget *>(name);
        return found ? *found : throw std::invalid_argument(name);
    }

    DeviceRecorder &recorder = DeviceRecorder::instance();
    std::unique_ptr<demo> window;
};
