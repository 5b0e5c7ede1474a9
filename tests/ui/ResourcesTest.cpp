// Pictures and style sheets: what forms, style sheets and code name is there, what is there is used, and the
// pictures are what their users expect.
#include "ui_demoClass.h"

#include <gtest/gtest.h>

#include <QDirIterator>
#include <QFile>
#include <QIcon>
#include <QImage>
#include <QRegularExpression>
#include <QSet>

namespace {

const QString kPrefixes = QStringLiteral("toobar|left|right|page4|dlg|png|demo|styles");

QString readText(const QString &path) {
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    return QString::fromUtf8(file.readAll());
}

// All forms, style sheets and code in one.
QString sources() {
    QString all;
    const QStringList kinds{QStringLiteral("*.ui"), QStringLiteral("*.qss"), QStringLiteral("*.cpp"),
                            QStringLiteral("*.h")};
    for (QDirIterator at(QStringLiteral("Z:" QOR_SOURCE_DIR), kinds, QDir::Files,
                         QDirIterator::Subdirectories);
         at.hasNext();)
        all += readText(at.next());
    return all;
}

QStringList resources() {
    QStringList all;
    for (const QString &prefix : kPrefixes.split(QLatin1Char('|')))
        for (QDirIterator at(QStringLiteral(":/") + prefix, QDir::Files, QDirIterator::Subdirectories);
             at.hasNext();)
            all << at.next();
    return all;
}

QStringList captures(const QString &pattern, const QString &text) {
    QStringList all;
    for (auto matches = QRegularExpression(pattern).globalMatch(text); matches.hasNext();)
        all << matches.next().captured(1);
    return all;
}

TEST(ResourcesTest, HasWhatIsNamedAndNothingElse) {
    const QString all = sources();
    const QStringList named =
        captures(QStringLiteral("(/(?:%1)/[^\"'()<>\\n]*?\\.(?:png|ico|qss))\\b").arg(kPrefixes), all);
    EXPECT_GT(named.size(), 100); // the scan itself works
    for (const QString &name : named)
        EXPECT_TRUE(QFile::exists(QLatin1Char(':') + name)) << name.toStdString();
    // Names put together from numbers: the battery series, of which 0 and 90 only complete it.
    const QRegularExpression series(QStringLiteral("/bp_\\d+\\.png$"));
    for (const QString &path : resources())
        EXPECT_TRUE(path.contains(QLatin1String("@2x")) || path.contains(series) ||
                    all.contains(path.section(QLatin1Char('/'), -1)))
            << path.toStdString();
}

TEST(ResourcesTest, HasEveryPictureAtTwiceTheSize) {
    for (const QString &path : resources().filter(QRegularExpression(QStringLiteral("\\.png$")))) {
        if (path.contains(QLatin1String("@2x")) || path.endsWith(QLatin1String("/pallete.png")))
            continue;
        const QImage once(path);
        const QImage twice(path.chopped(4) + QStringLiteral("@2x.png"));
        EXPECT_FALSE(once.isNull()) << path.toStdString();
        EXPECT_EQ(twice.size(), once.size() * 2) << path.toStdString();
    }
    const QList<QSize> icons = QIcon(QStringLiteral(":/demo/demo.ico")).availableSizes();
    for (const int side : {16, 32, 48, 256})
        EXPECT_TRUE(icons.contains(QSize(side, side))) << side;
}

TEST(ResourcesTest, MakesEveryColumnOfThePaletteAColour) {
    const QImage palette(QStringLiteral(":/page4/png/pallete.png"));
    EXPECT_EQ(palette.size(), QSize(256, 256));
    for (int x = 0; x < 256; x += 5) {
        EXPECT_EQ(palette.pixel(x, 0), qRgb(255, 255, 255)); // white at the top
        EXPECT_EQ(QColor(palette.pixel(x, 192)).saturation(), 255) << x;
        EXPECT_NEAR(QColor(palette.pixel(x, 192)).hue(), x * 360 / 256, 2) << x;
    }
}

// Both ways: a rule for a widget that is gone, and a role that no rule knows.
TEST(ResourcesTest, StyleSheetAndFormKnowEachOther) {
    QMainWindow window;
    Ui::demoClass form;
    form.setupUi(&window);
    QString sheet = readText(QStringLiteral(":/styles/panel.qss"));
    sheet.remove(QRegularExpression(QStringLiteral("/\\*.*?\\*/|\\{[^}]*\\}"),
                                    QRegularExpression::DotMatchesEverythingOption));
    for (const QString &name : captures(QStringLiteral("#(\\w+)"), sheet))
        EXPECT_NE(window.findChild<QWidget *>(name), nullptr) << name.toStdString();
    QSet<QString> worn;
    for (const QWidget *widget : window.findChildren<QWidget *>())
        worn << widget->property("role").toString();
    worn.remove(QString());
    const QStringList styled = captures(QStringLiteral("role=\"(\\w+)\""), sheet);
    EXPECT_EQ(worn, QSet<QString>(styled.begin(), styled.end()));
}

} // namespace
