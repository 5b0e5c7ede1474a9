// The texts of the whole main window with all its pages and dialogs, in both languages.
#include "ui/StartTip.h"
#include "ui/WindowTest.h"

#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QRegularExpression>
#include <QSlider>
#include <QStackedWidget>
#include <QTextDocument>

namespace {

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
            for (int i = 0; i < box->count(); ++i)
                add("entry", box->itemText(i));
    }
    return lines;
}

bool fits(const QLabel &label) {
    if (label.wordWrap())
        return label.heightForWidth(label.width()) <= label.height();
    if (Qt::mightBeRichText(label.text()))
        return label.sizeHint().width() <= label.width();
    QFont font = label.font();
    if (font.weight() < QFont::Bold)
        font.setWeight(QFont::Normal); // test machines have no medium face and smear the normal one
    return QFontMetrics(font).size(0, label.text()).width() <= label.contentsRect().width();
}

// The names of the visible controls that are too small for their text.
QStringList clipped(const QWidget &window) {
    QStringList names;
    for (const QWidget *widget : window.findChildren<QWidget *>()) {
        const auto *label = qobject_cast<const QLabel *>(widget);
        const auto *button = qobject_cast<const QAbstractButton *>(widget);
        if (widget->isVisible() &&
            ((label && !fits(*label)) ||
             (button && !button->text().isEmpty() && button->sizeHint().width() > button->width())))
            names << widget->objectName();
    }
    return names;
}

class InterfaceTexts : public WindowTest {
protected:
    InterfaceTexts() {
        DeviceInfo &info = DeviceRecorder::instance().info; // levels that no form text happens to show
        info.sound.masterVolume = info.sound.rightVolume = 63;
        info.sound.leftVolume = 41;
        info.system.micLevel = 77;
        info.system.monitorLevel = 22;
        info.sound.speakerLevel[0] = -7;
        info.extension.gain[0] = -9;
        QApplication::setFont(QFont(QStringLiteral("Microsoft YaHei")));
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
                child<QComboBox>(dialog, "comboBox").setCurrentIndex(language);
                child<QPushButton>(dialog, "pushButton_2").click();
            });
        EXPECT_EQ(joined(texts(*window)), joined(language == 0 ? chinese : english));
        EXPECT_EQ(child<QSlider>(*window, "verticalSlider_5").value(), 41);
    }
    for (const std::string &call : DeviceRecorder::instance().calls)
        EXPECT_TRUE(call == "_getVolum(0, 0)" || call.rfind("_hid_trans_data(", 0) == 0)
            << call; // the battery

    const QRegularExpression han(
        QStringLiteral("[\\x{2e80}-\\x{9fff}\\x{f900}-\\x{faff}\\x{ff00}-\\x{ffef}]"));
    EXPECT_GT(chinese.filter(han).size(), 100);
    EXPECT_EQ(joined(everywhere(*window, &texts).filter(han)), "");
}

QString styleSheetWarnings;

void keepStyleSheetWarnings(QtMsgType, const QMessageLogContext &, const QString &text) {
    if (text.contains(QLatin1String("stylesheet")) || text.contains(QLatin1String("Unknown property")))
        styleSheetWarnings += text;
}

TEST_F(InterfaceTexts, NothingIsClippedAndEveryStyleSheetParsesInEitherLanguage) {
    const QtMessageHandler before = qInstallMessageHandler(&keepStyleSheetWarnings);
    for (const uint32_t language : {1u, 0u}) {
        const std::unique_ptr<demo> window = start(language);
        auto &pages = child<QStackedWidget>(*window, "stackedWidget");
        QStringList names = everywhere(*window, &clipped);
        for (int page = 0; page < pages.count(); ++page) {
            pages.setCurrentIndex(page);
            QTest::qWait(10);
            names += clipped(*window);
        }
        EXPECT_EQ(joined(names), "") << "language " << language;
        child<QPushButton>(*window, "bt_y0").setFixedWidth(20);
        EXPECT_EQ(joined(clipped(*window)), "bt_y0"); // the measure itself works
    }
    qInstallMessageHandler(before);
    EXPECT_EQ(styleSheetWarnings.toStdString(), "");
}

// Screen readers hear "checked" for what the eye sees as chosen, on or muted, whatever was clicked before.
TEST_F(InterfaceTexts, CheckedIsWhatIsShown) {
    const std::unique_ptr<demo> window = start(1);
    const auto &pages = child<QStackedWidget>(*window, "stackedWidget");
    QList<QPushButton *> buttons;
    for (QPushButton *button : window->findChildren<QPushButton *>())
        if (button->isCheckable())
            buttons << button;
    EXPECT_GT(buttons.size(), 45);
    const auto looksOn = [&](const QPushButton &button) {
        if (button.objectName().startsWith(QLatin1String("bt_y")))
            return button.objectName() == QStringLiteral("bt_y%1").arg(pages.currentIndex());
        if (button.objectName() == QLatin1String("btn_uninstall_mic")) // one setting with pushButton_16
            return !child<QPushButton>(*window, "pushButton_16").isChecked();
        for (const char *mark : {"btn_open.png", "1px solid #ef0303", "rgba(110,110,110,1)",
                                 "silent-volumeHigh.png", "icon_lock.png"})
            if (button.styleSheet().contains(QLatin1String(mark)))
                return true;
        return false;
    };
    for (int i = 0; i < 2 * buttons.size(); ++i) {
        QPushButton *clicked = buttons[i % buttons.size()];
        clicked->click();
        for (const QPushButton *button : qAsConst(buttons))
            EXPECT_EQ(button->isChecked(), looksOn(*button))
                << button->objectName().toStdString() << " after " << clicked->objectName().toStdString();
    }
}

} // namespace
