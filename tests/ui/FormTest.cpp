// What an edit in Designer breaks without the compiler's notice.
#include "ui_demoClass.h"

#include <gtest/gtest.h>

#include <QDirIterator>
#include <QRegularExpression>

namespace {

TEST(FormTest, EveryNamedPictureAndStyleSheetExists) {
    const QRegularExpression names(
        QStringLiteral("/(toobar|left|right|page4|dlg|png|demo|styles)/[^\"'()<>\\n]*?\\.(png|ico|qss)\\b"));
    QDirIterator files(QStringLiteral("Z:" QOR_SOURCE_DIR), {"*.ui", "*.qss", "*.cpp", "*.h"}, QDir::Files,
                       QDirIterator::Subdirectories);
    int count = 0;
    while (files.hasNext()) {
        QFile file(files.next());
        ASSERT_TRUE(file.open(QIODevice::ReadOnly)) << file.fileName().toStdString();
        for (auto found = names.globalMatch(QString::fromUtf8(file.readAll())); found.hasNext(); ++count) {
            const QString name = found.next().captured();
            EXPECT_TRUE(QFile::exists(QLatin1Char(':') + name)) << name.toStdString();
        }
    }
    EXPECT_GT(count, 100); // the scan itself works
}

TEST(FormTest, EveryPictureHasOneOfDoubleSize) {
    QDirIterator pictures(QStringLiteral(":/"), {"*.png"}, QDir::Files, QDirIterator::Subdirectories);
    int count = 0;
    while (pictures.hasNext()) {
        const QString name = pictures.next();
        // The palette's pixels are read one by one; as a smooth picture it can be doubled by the painter.
        if (name.contains(QLatin1String("@2x")) || name.startsWith(QLatin1String(":/qt-project.org/")) ||
            name.endsWith(QLatin1String("/pallete.png")))
            continue;
        const QString sharp = QString(name).insert(name.size() - 4, QStringLiteral("@2x"));
        EXPECT_EQ(QImage(sharp).size(), 2 * QImage(name).size()) << name.toStdString();
        ++count;
    }
    EXPECT_GT(count, 100);
}

TEST(FormTest, LetsTheKeyboardReachAndTheScreenReaderNameEveryControl) {
    QMainWindow window;
    Ui::demoClass form;
    form.setupUi(&window);
    for (const QWidget *widget : window.findChildren<QWidget *>()) {
        const auto *field = qobject_cast<const QLineEdit *>(widget);
        if (!qobject_cast<const QAbstractButton *>(widget) && !qobject_cast<const QComboBox *>(widget) &&
            (!field || qobject_cast<QComboBox *>(field->parentWidget())))
            continue;
        SCOPED_TRACE(widget->objectName().toStdString());
        EXPECT_TRUE(widget->focusPolicy() & Qt::TabFocus);
        const bool textFromCode = widget == form.btn_jhq9 || widget == form.btn_jhq10;
        const bool hasText = textFromCode || !widget->property("text").toString().isEmpty();
        EXPECT_TRUE(hasText || !widget->accessibleName().isEmpty());
        const bool isPicture = !hasText && qobject_cast<const QAbstractButton *>(widget);
        EXPECT_TRUE(!isPicture || widget->toolTip() == widget->accessibleName());
    }
}

} // namespace
