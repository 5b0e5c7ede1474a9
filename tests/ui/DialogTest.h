// The main window's surroundings for a dialog under test: the form in a window of the panel's size, the
// product key in the registry, and a way to act while a dialog's own event loop runs.
#pragma once

#include "helpers/LogHelper.h"
#include "helpers/ProductSettings.h"
#include "helpers/Registry.h"
#include "ui/DialogState.h"
#include "ui/pages/PageTest.h"

#include <functional>
#include <optional>
#include <QApplication>
#include <QDialog>
#include <QFile>
#include <QTest>
#include <QTimer>

class DialogTest : public PageTest {
protected:
    using Act = std::function<void(QDialog &)>;

    DialogTest() {
        Registry::CreateKey(ProductSettings::kProductKey);
        for (const wchar_t *name : {L"isAddSysicon", L"isStartShow", L"language"})
            store(name, std::nullopt);
        window.resize(1071, 869);
        window.move(200, 60); // must not show in the dialogs' positions
        window.show();
    }

    static std::optional<uint32_t> stored(const wchar_t *name) { return ProductSettings::readDword(name); }
    static void store(const wchar_t *name, std::optional<uint32_t> value) {
        if (value)
            ProductSettings::writeDword(name, *value);
        else if (stored(name))
            Registry::DeleteValue(ProductSettings::kProductKey, name);
    }

    // Calls `open`, which must run a dialog of this size as a frameless child in the middle of the window,
    // and `act` once it is on the screen. A dialog that `act` leaves open is a failure and is closed.
    void runDialog(QSize size, const std::function<void()> &open, const Act &act) {
        bool acted = false;
        QTimer::singleShot(0, &window, [&] {
            QTest::qWait(20);
            acted = true;
            const QList<QDialog *> dialogs = window.findChildren<QDialog *>();
            ASSERT_EQ(dialogs.size(), 1);
            QDialog &dialog = *dialogs.first();
            EXPECT_EQ(dialog.windowFlags(), Qt::FramelessWindowHint);
            EXPECT_EQ(dialog.geometry(),
                      QRect(QPoint(1071 / 2 - size.width() / 2, 869 / 2 - size.height() / 2), size));
            EXPECT_TRUE(
                dialog.isAncestorOf(window.childAt(dialog.pos() + QPoint(60, 60)))); // nothing above it
            act(dialog);
            QTest::qWait(20);
            EXPECT_FALSE(dialog.isVisible()) << "the dialog stayed open";
            dialog.close();
        });
        open();
        EXPECT_TRUE(acted) << "returned without running a dialog";
        EXPECT_TRUE(window.findChildren<QDialog *>().isEmpty()) << "the dialog was not deleted";
        EXPECT_FALSE(state.anyOpen());
    }

    static void click(const QDialog &dialog, const char *name) {
        auto *widget = dialog.findChild<QAbstractButton *>(QString::fromLatin1(name));
        ASSERT_NE(widget, nullptr) << name;
        // At the left end, where a check box has its indicator.
        QTest::mouseClick(widget, Qt::LeftButton, {}, QPoint(8, widget->height() / 2));
    }

    static QByteArray logText() {
        QFile log(QString::fromStdWString(LogFilePath()));
        return log.open(QIODevice::ReadOnly) ? log.readAll() : QByteArray();
    }

    DialogState state;
};
