// The texts of the whole main window with all its pages and dialogs, in both languages.
#include "ui/demo.h"

#include "helpers/ProductSettings.h"
#include "helpers/Registry.h"
#include "support/DeviceRecorder.h"
#include "ui/QmFiles.h"
#include "ui/StartTip.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QLabel>
#include <QPushButton>
#include <QRegularExpression>
#include <QSlider>
#include <QStackedWidget>
#include <QStyle>
#include <QStyleOptionComboBox>
#include <QTest>
#include <QTextDocument>
#include <QTextDocumentFragment>
#include <QTimer>

namespace {

QStringList entries(const QComboBox &box) {
    QStringList all;
    for (int i = 0; i < box.count(); ++i)
        all << box.itemText(i);
    return all;
}

// One line per text of the window and everything in it, shown or not, tool tips and the names for screen
// readers included: "object.property: text".
QStringList texts(const QWidget &window) {
    QStringList lines;
    for (const QWidget *widget : window.findChildren<QWidget *>()) {
        const auto add = [&](const char *kind, const QString &text) {
            if (!text.isEmpty())
                lines << QStringLiteral("%1.%2: %3").arg(widget->objectName(), QLatin1String(kind), text);
        };
        for (const char *property :
             {"text", "title", "toolTip", "windowTitle", "placeholderText", "accessibleName", "format"})
            add(property, widget->property(property).toString());
        if (const auto *box = qobject_cast<const QComboBox *>(widget))
            for (const QString &entry : entries(*box))
                add("entry", entry);
    }
    return lines;
}

// Test machines have no medium face and smear the normal one, which makes it wider.
QFontMetrics metrics(const QWidget &widget) {
    QFont font = widget.font();
    if (font.weight() < QFont::Bold)
        font.setWeight(QFont::Normal);
    return QFontMetrics(font);
}

bool fits(const QLabel &label) {
    const QString text = Qt::mightBeRichText(label.text())
                             ? QTextDocumentFragment::fromHtml(label.text()).toPlainText()
                             : label.text();
    const QSize room = label.contentsRect().size();
    const QSize needed = metrics(label)
                             .boundingRect(QRect(0, 0, label.wordWrap() ? room.width() : 10000, 10000),
                                           label.wordWrap() ? Qt::TextWordWrap : 0, text)
                             .size();
    const bool severalLines = label.wordWrap() || text.contains(QLatin1Char('\n'));
    return needed.width() <= room.width() && (!severalLines || needed.height() <= room.height());
}

bool fits(const QComboBox &box) {
    QStyleOptionComboBox option;
    option.initFrom(&box);
    option.editable = box.isEditable();
    const QRect room =
        box.style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, &box);
    const QStringList all = entries(box);
    return std::all_of(all.begin(), all.end(), [&](const QString &entry) {
        return metrics(box).horizontalAdvance(entry) <= room.width();
    });
}

// The names of the visible controls that are too small for a text of theirs.
QStringList clipped(const QWidget &window) {
    QStringList names;
    for (const QWidget *widget : window.findChildren<QWidget *>()) {
        const auto *label = qobject_cast<const QLabel *>(widget);
        const auto *button = qobject_cast<const QAbstractButton *>(widget);
        const auto *box = qobject_cast<const QComboBox *>(widget);
        if (widget->isVisible() &&
            ((label && !fits(*label)) || (box && !fits(*box)) ||
             (button && !button->text().isEmpty() && button->sizeHint().width() > button->width())))
            names << widget->objectName();
    }
    return names;
}

class InterfaceTexts : public testing::Test {
protected:
    InterfaceTexts() {
        DeviceRecorder::instance().reset();
        DeviceInfo &info = DeviceRecorder::instance().info; // levels that no form text happens to show
        info.sound.masterVolume = info.sound.rightVolume = 63;
        info.sound.leftVolume = 41;
        info.system.micLevel = 77;
        info.system.monitorLevel = 22;
        info.sound.speakerLevel[0] = -7;
        info.extension.gain[0] = -9;
        QApplication::setFont(QFont(QStringLiteral("Microsoft YaHei")));
        qApp->setStyleSheet(QStringLiteral("QPushButton:focus { outline: none; }"));
        QmFiles::restore();
        Registry::CreateKey(ProductSettings::kProductKey);
    }

    static std::unique_ptr<demo> start(uint32_t language) {
        ProductSettings::writeDword(L"language", language);
        auto window = std::make_unique<demo>();
        window->move(180, 60);
        window->show();
        QTest::qWait(150); // the re-layout after construction
        return window;
    }

    static void whileDialogRuns(demo &window, const std::function<void()> &open,
                                const std::function<void(QDialog &)> &act) {
        QTimer::singleShot(0, &window, [&] {
            QTest::qWait(20);
            QDialog *dialog = window.findChild<QDialog *>();
            ASSERT_NE(dialog, nullptr);
            act(*dialog);
            dialog->close();
        });
        open();
    }

    // What `look` finds in the window and each of its dialogs.
    static QStringList everywhere(demo &window, QStringList (*look)(const QWidget &)) {
        QStringList lines = look(window);
        const std::function<void()> openings[] = {[&] { window.OpenSettingsDialog(); },
                                                  [&] { window.ShowVersionDialog(); },
                                                  [&] { ShowStartTip(&window); }};
        for (const auto &open : openings)
            whileDialogRuns(window, open, [&](QDialog &dialog) { lines += look(dialog); });
        return lines;
    }

    static std::string joined(const QStringList &lines) {
        return lines.join(QLatin1Char('\n')).toStdString();
    }
};

// After a switch every text is what a start in that language shows, the live levels included, and the device
// is not written to. English leaves no Chinese behind.
TEST_F(InterfaceTexts, SwitchingEqualsStartingInTheLanguage) {
    const QStringList chinese = texts(*start(0));
    const std::unique_ptr<demo> window = start(1);
    const QStringList english = texts(*window);
    EXPECT_TRUE(english.contains(QStringLiteral("label_57.text: 41")));
    DeviceRecorder::instance().calls.clear();
    for (const int language : {0, 1}) {
        whileDialogRuns(
            *window, [&] { window->OpenSettingsDialog(); },
            [&](QDialog &dialog) {
                dialog.findChild<QComboBox *>(QStringLiteral("comboBox"))->setCurrentIndex(language);
                dialog.findChild<QPushButton *>(QStringLiteral("pushButton_2"))->click();
            });
        QTest::qWait(20);
        EXPECT_EQ(joined(texts(*window)), joined(language == 0 ? chinese : english));
        EXPECT_EQ(window->findChild<QSlider *>(QStringLiteral("verticalSlider_5"))->value(), 41);
    }
    for (const std::string &call : DeviceRecorder::instance().calls)
        EXPECT_EQ(call.substr(0, 8), "_getVolu") << call;

    const QRegularExpression han(
        QStringLiteral("[\\x{2e80}-\\x{9fff}\\x{f900}-\\x{faff}\\x{ff00}-\\x{ffef}]"));
    EXPECT_GT(chinese.filter(han).size(), 100);
    EXPECT_EQ(joined(everywhere(*window, &texts).filter(han)), "");
}

TEST_F(InterfaceTexts, NothingIsClippedInEitherLanguage) {
    for (const uint32_t language : {1u, 0u}) {
        const std::unique_ptr<demo> window = start(language);
        auto *pages = window->findChild<QStackedWidget *>(QStringLiteral("stackedWidget"));
        QStringList names = everywhere(*window, &clipped);
        for (int page = 0; page < pages->count(); ++page) {
            pages->setCurrentIndex(page);
            QTest::qWait(10);
            names += clipped(*window);
        }
        EXPECT_EQ(joined(names), "") << "language " << language;
        window->findChild<QPushButton *>(QStringLiteral("bt_y0"))->setFixedWidth(20);
        EXPECT_EQ(joined(clipped(*window)), "bt_y0"); // the measure itself works
    }
}

} // namespace
