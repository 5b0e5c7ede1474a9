// What an edit in Designer breaks without the compiler's notice.
#include "resources/MainForm.h"
#include "ui_demoClass.h"

#include <gtest/gtest.h>

#include <QDirIterator>
#include <QRegularExpression>

namespace {

TEST(FormTest, EveryNamedFileExistsAndEveryPictureHasOneOfDoubleSize) {
    const QRegularExpression pattern(
        "/(toobar|left|right|page4|dlg|png|demo|styles)/[^\"'()<>\\n]*?\\.(png|ico|qss)\\b");
    QStringList names;
    QDirIterator sources("Z:" QOR_SOURCE_DIR, {"*.ui", "*.qss", "*.cpp", "*.h"}, QDir::Files,
                         QDirIterator::Subdirectories);
    while (sources.hasNext()) {
        QFile file(sources.next());
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        for (auto found = pattern.globalMatch(QString::fromUtf8(file.readAll())); found.hasNext();)
            names << ":" + found.next().captured();
    }
    EXPECT_GT(names.size(), 100); // the scan itself works
    QDirIterator pictures(":/", {"*.png"}, QDir::Files, QDirIterator::Subdirectories);
    while (pictures.hasNext())
        names << pictures.next();
    for (const QString &name : qAsConst(names)) {
        EXPECT_TRUE(QFile::exists(name)) << name.toStdString();
        // The palette's pixels are read one by one; as a smooth picture it can be doubled by the painter.
        if (name.endsWith(".png") && !name.contains("@2x") && !name.startsWith(":/qt-project.org/") &&
            !name.endsWith("/pallete.png")) {
            const QString sharp = QString(name).insert(name.size() - 4, "@2x");
            EXPECT_EQ(QImage(sharp).size(), 2 * QImage(name).size()) << name.toStdString();
        }
    }
}

TEST(FormTest, LetsTheKeyboardReachAndTheScreenReaderNameEveryControl) {
    QMainWindow window;
    Ui::demoClass form;
    setUpMainForm(form, window);
    for (const QWidget *widget : window.findChildren<QWidget *>()) {
        const auto *field = qobject_cast<const QLineEdit *>(widget);
        const bool isButton = qobject_cast<const QAbstractButton *>(widget);
        if (!isButton && !qobject_cast<const QComboBox *>(widget) &&
            (!field || qobject_cast<QComboBox *>(field->parentWidget())))
            continue;
        SCOPED_TRACE(widget->objectName().toStdString());
        EXPECT_TRUE(widget->focusPolicy() & Qt::TabFocus);
        const bool textFromCode = widget == form.btn_jhq9 || widget == form.btn_jhq10;
        const bool hasText = textFromCode || !widget->property("text").toString().isEmpty();
        EXPECT_TRUE(hasText || !widget->accessibleName().isEmpty());
        EXPECT_TRUE(hasText || !isButton || widget->toolTip() == widget->accessibleName());
    }
}

} // namespace
