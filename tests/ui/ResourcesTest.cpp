// Pictures and style sheets: what forms, style sheets and code name is there.
#include <gtest/gtest.h>

#include "ui_demoClass.h"

#include <QDirIterator>
#include <QFile>
#include <QRegularExpression>

namespace {

const QString kSources = QStringLiteral("Z:" QOR_SOURCE_DIR);
const QStringList kPrefixes{QStringLiteral("toobar"), QStringLiteral("left"),  QStringLiteral("right"),
                            QStringLiteral("page4"),  QStringLiteral("dlg"),   QStringLiteral("png"),
                            QStringLiteral("demo"),   QStringLiteral("styles")};

QString readText(const QString &path) {
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    return QString::fromUtf8(file.readAll());
}

TEST(ResourcesTest, HasEveryFileThatIsNamed) {
    const QRegularExpression path(
        QStringLiteral("/(?:%1)/[^\"'()<>\\n]*?\\.(?:png|ico|qss)\\b").arg(kPrefixes.join(QLatin1Char('|'))));
    const QStringList sources{QStringLiteral("*.ui"), QStringLiteral("*.qss"), QStringLiteral("*.cpp"),
                              QStringLiteral("*.h")};
    int named = 0;
    for (QDirIterator at(kSources, sources, QDir::Files, QDirIterator::Subdirectories); at.hasNext();)
        for (auto matches = path.globalMatch(readText(at.next())); matches.hasNext(); ++named) {
            const QString name = matches.next().captured();
            EXPECT_TRUE(name.contains(QLatin1Char('%')) || QFile::exists(QLatin1Char(':') + name))
                << name.toStdString() << " in " << at.filePath().toStdString();
        }
    EXPECT_GT(named, 100); // the scan itself works
}

TEST(ResourcesTest, StylesOnlyObjectsOfTheForm) {
    QMainWindow window;
    Ui::demoClass form;
    form.setupUi(&window);
    QString sheet = readText(QStringLiteral(":/styles/panel.qss"));
    sheet.remove(QRegularExpression(QStringLiteral("/\\*.*?\\*/|\\{[^}]*\\}"),
                                    QRegularExpression::DotMatchesEverythingOption));
    for (auto names = QRegularExpression(QStringLiteral("#(\\w+)")).globalMatch(sheet); names.hasNext();) {
        const QString name = names.next().captured(1);
        EXPECT_NE(window.findChild<QWidget *>(name), nullptr) << name.toStdString();
    }
}

} // namespace
