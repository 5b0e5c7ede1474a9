// Pictures and style sheets: what forms, style sheets and code name is there, what is there is used, and the
// pictures are what their users expect.
#include <gtest/gtest.h>

#include "ui_demoClass.h"

#include <QDirIterator>
#include <QFile>
#include <QIcon>
#include <QImage>
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

// The files below src/ whose names end in one of the given ways, by path.
QMap<QString, QString> sourceTexts(const QStringList &filters) {
    QMap<QString, QString> texts;
    for (QDirIterator at(kSources, filters, QDir::Files, QDirIterator::Subdirectories); at.hasNext();) {
        const QString path = at.next();
        texts.insert(path, readText(path));
    }
    return texts;
}

QStringList resources() {
    QStringList all;
    for (const QString &prefix : kPrefixes)
        for (QDirIterator at(QStringLiteral(":/") + prefix, QDir::Files, QDirIterator::Subdirectories);
             at.hasNext();)
            all << at.next();
    return all;
}

TEST(ResourcesTest, HasEveryFileThatIsNamed) {
    const QRegularExpression path(
        QStringLiteral("/(?:%1)/[^\"'()<>\\n]*?\\.(?:png|ico|qss)\\b").arg(kPrefixes.join(QLatin1Char('|'))));
    const auto texts = sourceTexts(
        {QStringLiteral("*.ui"), QStringLiteral("*.qss"), QStringLiteral("*.cpp"), QStringLiteral("*.h")});
    int named = 0;
    for (auto text = texts.begin(); text != texts.end(); ++text)
        for (auto matches = path.globalMatch(text.value()); matches.hasNext(); ++named) {
            const QString name = matches.next().captured();
            EXPECT_TRUE(name.contains(QLatin1Char('%')) || QFile::exists(QLatin1Char(':') + name))
                << name.toStdString() << " in " << text.key().toStdString();
        }
    EXPECT_GT(named, 100); // the scan itself works
}

TEST(ResourcesTest, HoldsWhatTheCollectionsList) {
    const QRegularExpression collection(
        QStringLiteral("prefix=\"([^\"]+)\"|<file(?: alias=\"([^\"]+)\")?>([^<]+)<"));
    const auto files = sourceTexts({QStringLiteral("*.qrc")});
    EXPECT_EQ(files.size(), 7);
    int listed = 0;
    for (const QString &text : files) {
        QString prefix;
        for (auto matches = collection.globalMatch(text); matches.hasNext();) {
            const QRegularExpressionMatch match = matches.next();
            if (!match.captured(1).isEmpty()) {
                prefix = match.captured(1);
                continue;
            }
            const QString name = match.captured(match.captured(2).isEmpty() ? 3 : 2);
            EXPECT_TRUE(QFile::exists(QLatin1Char(':') + prefix + QLatin1Char('/') + name))
                << name.toStdString();
            ++listed;
        }
    }
    EXPECT_EQ(listed, resources().size());
}

TEST(ResourcesTest, HoldsNothingThatNobodyNames) {
    // Shown by numbers put into "bp_%d0.png"; 0 and 90 complete the series.
    const QRegularExpression series(QStringLiteral("/bp_\\d+\\.png$"));
    const QString all = QStringList(sourceTexts({QStringLiteral("*.ui"), QStringLiteral("*.qss"),
                                                 QStringLiteral("*.cpp"), QStringLiteral("*.h")})
                                        .values())
                            .join(QLatin1Char('\n'));
    for (const QString &path : resources()) {
        if (path.contains(QLatin1String("@2x")) || path.contains(series))
            continue;
        EXPECT_TRUE(all.contains(path.mid(path.lastIndexOf(QLatin1Char('/')) + 1))) << path.toStdString();
    }
}

TEST(ResourcesTest, HasEveryPictureAtTwiceTheSize) {
    for (const QString &path : resources()) {
        if (!path.endsWith(QLatin1String(".png")) || path.contains(QLatin1String("@2x")) ||
            path.endsWith(QLatin1String("pallete.png")))
            continue;
        const QImage once(path),
            twice(QString(path).replace(QLatin1String(".png"), QLatin1String("@2x.png")));
        EXPECT_FALSE(once.isNull()) << path.toStdString();
        EXPECT_EQ(twice.size(), once.size() * 2) << path.toStdString();
    }
}

TEST(ResourcesTest, GivesPicturesTheSizesOfTheirPlaces) {
    const struct {
        const char *path;
        QSize size;
    } rows[] = {
        {":/page4/png/pallete.png", {256, 256}},    {":/page4/png/圆.png", {350, 350}},
        {":/left/png/logo.png", {181, 151}},        {":/right/png/内容区bg.png", {778, 513}},
        {":/right/png/pic_room_S.png", {94, 94}},   {":/right/png/pic_room_M.png", {112, 112}},
        {":/right/png/pic_room_L.png", {134, 134}}, {":/png/png/tanchuang_bg.png", {370, 286}},
        {":/right/png/48KHz.png", {569, 258}},      {":/right/png/Qorsound spatial sound.png", {612, 341}},
    };
    for (const auto &row : rows)
        EXPECT_EQ(QImage(QString::fromUtf8(row.path)).size(), row.size) << row.path;
    const QIcon icon(QStringLiteral(":/demo/demo.ico"));
    for (const int side : {16, 32, 48, 256})
        EXPECT_TRUE(icon.availableSizes().contains(QSize(side, side))) << side;
}

TEST(ResourcesTest, MakesEveryColumnOfThePaletteAColour) {
    const QImage palette(QStringLiteral(":/page4/png/pallete.png"));
    EXPECT_EQ(QColor(palette.pixel(0, 192)), QColor(255, 0, 0));
    EXPECT_EQ(QColor(palette.pixel(128, 192)), QColor(0, 255, 255));
    for (int x = 0; x < 256; x += 5) {
        EXPECT_EQ(palette.pixel(x, 0), qRgb(255, 255, 255)); // white at the top
        EXPECT_EQ(QColor(palette.pixel(x, 192)).saturation(), 255) << x;
        EXPECT_NEAR(QColor(palette.pixel(x, 192)).hue(), x * 360 / 256, 2) << x;
    }
}

TEST(ResourcesTest, StylesOnlyObjectsOfTheForm) {
    QMainWindow window;
    Ui::demoClass form;
    form.setupUi(&window);
    QString sheet = readText(QStringLiteral(":/styles/panel.qss"));
    sheet.remove(QRegularExpression(QStringLiteral("/\\*.*?\\*/|\\{[^}]*\\}"),
                                    QRegularExpression::DotMatchesEverythingOption));
    QStringList roles;
    for (const QWidget *widget : window.findChildren<QWidget *>())
        roles << widget->property("role").toString();
    for (auto names = QRegularExpression(QStringLiteral("#(\\w+)")).globalMatch(sheet); names.hasNext();) {
        const QString name = names.next().captured(1);
        EXPECT_NE(window.findChild<QWidget *>(name), nullptr) << name.toStdString();
    }
    for (auto names = QRegularExpression(QStringLiteral("role=\"(\\w+)\"")).globalMatch(sheet);
         names.hasNext();) {
        const QString role = names.next().captured(1);
        EXPECT_TRUE(roles.contains(role)) << role.toStdString();
    }
}

} // namespace
