// The main window's surroundings for a dialog under test: the form in a window of the panel's size, the
// product key in the registry, and a way to act while a dialog's own event loop runs.
#pragma once

#include "helpers/ProductSettings.h"
#include "helpers/Registry.h"
#include "ui/pages/PageTest.h"

#include <functional>
#include <map>
#include <optional>
#include <QApplication>
#include <QDialog>
#include <QTest>
#include <QTimer>
#include <string>

class DialogTest : public PageTest {
protected:
    DialogTest() {
        Registry::CreateKey(ProductSettings::kProductKey);
        for (const wchar_t *name : {L"isAddSysicon", L"isStartShow", L"language", L"DisplayName"}) {
            if (Registry::ValueExists(ProductSettings::kProductKey, name))
                Registry::DeleteValue(ProductSettings::kProductKey, name);
        }
        window.resize(1071, 869);
        window.move(200, 60); // must not show in the dialogs' positions
        window.show();
    }

    static std::optional<uint32_t> stored(const wchar_t *name) { return ProductSettings::readDword(name); }
    static void store(const wchar_t *name, std::optional<uint32_t> value) {
        if (value)
            ProductSettings::writeDword(name, *value);
    }

    QList<QDialog *> dialogs() const { return window.findChildren<QDialog *>(); }

    // Calls `open`, which must run a dialog, and `act` once the dialog is on the screen. A dialog that `act`
    // leaves open is a failure and is closed.
    void runDialog(const std::function<void()> &open, const std::function<void(QDialog &)> &act) {
        bool acted = false;
        QTimer::singleShot(0, &window, [&] {
            QTest::qWait(20);
            acted = true;
            if (dialogs().size() != 1) {
                ADD_FAILURE() << dialogs().size() << " dialogs open";
                return;
            }
            QDialog &dialog = *dialogs().first();
            act(dialog);
            QTest::qWait(20);
            if (!dialogs().isEmpty() && dialogs().first()->isVisible()) {
                ADD_FAILURE() << "the dialog stayed open";
                dialogs().first()->close();
            }
        });
        open();
        EXPECT_TRUE(acted) << "returned without running a dialog";
        EXPECT_TRUE(dialogs().isEmpty()) << "the dialog was not deleted";
    }

    // Frameless child of the window in its middle, entirely inside, nothing of the window above it.
    void expectPlaced(const QDialog &dialog, QSize size) {
        EXPECT_EQ(dialog.windowFlags(), Qt::FramelessWindowHint);
        EXPECT_EQ(dialog.parentWidget(), &window);
        EXPECT_EQ(dialog.size(), size);
        EXPECT_EQ(dialog.pos(), QPoint(1071 / 2 - size.width() / 2, 869 / 2 - size.height() / 2));
        const QPoint middle = dialog.geometry().center();
        const QWidget *top = window.childAt(middle);
        EXPECT_TRUE(top == &dialog || dialog.isAncestorOf(top));
    }

    static void click(const QDialog &dialog, const char *name) {
        auto *widget = dialog.findChild<QAbstractButton *>(QString::fromLatin1(name));
        ASSERT_NE(widget, nullptr) << name;
        // At the left end, where a check box has its indicator.
        QTest::mouseClick(widget, Qt::LeftButton, {}, QPoint(8, widget->height() / 2));
    }
};
