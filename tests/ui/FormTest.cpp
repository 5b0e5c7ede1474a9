// The form of the main window as its users rely on it: code finds controls by name, pages by index, and shows
// states by exchanging texts of a widget's own style sheet. One table per kind of promise.
#include "ui_demoClass.h"

#include <gtest/gtest.h>

#include <QFile>

namespace {

class FormTest : public testing::Test {
protected:
    FormTest() { form.setupUi(&window); }

    QWidget *find(const QString &name) {
        auto *found = window.findChild<QWidget *>(name);
        EXPECT_NE(found, nullptr) << name.toStdString();
        return found;
    }

    QMainWindow window;
    Ui::demoClass form;
};

// Names written "btn_jhq0..11" stand for all numbers of the range.
QStringList expanded(const char *names) {
    QStringList all;
    for (const QString &name : QString::fromLatin1(names).split(QLatin1Char(' '))) {
        const int dots = name.indexOf(QLatin1String(".."));
        if (dots < 0) {
            all << name;
            continue;
        }
        int digits = dots;
        while (name.at(digits - 1).isDigit())
            --digits;
        for (int i = name.mid(digits, dots - digits).toInt(); i <= name.mid(dots + 2).toInt(); ++i)
            all << name.left(digits) + QString::number(i);
    }
    return all;
}

const struct {
    const char *parent; // any ancestor: layouts and frames in between are free
    const char *className;
    const char *names;
} kObjects[] = {
    {"demoClass", "QWidget", "centralWidget"},
    {"centralWidget", "QWidget", "widget_left widget_right"},
    {"widget_right", "QWidget", "widget_top widget_mbtm"},
    {"widget_mbtm", "QWidget", "widget_btm widget_53"},
    {"widget_mbtm", "QStackedWidget", "stackedWidget"},
    {"widget_top", "QPushButton", "pushButton pushButton_1..3"},
    {"widget_left", "QWidget", "widget_4 widget widget_3 widget_7"},
    {"widget_left", "QLabel", "label label_2 label_3 label_19"},
    {"widget_left", "QPushButton", "bt_y0..11"},
    {"widget_12", "QLabel", "label_13 label_54..57 label_59 label_60"},
    {"widget_12", "QSlider", "verticalSlider_4..5 verticalSlider_7"},
    {"widget_12", "QPushButton", "pushButton_4 pushButton_7 pushButton_12 btn_install_spk btn_uninstall_spk"},
    {"widget_13", "QRadioButton", "radioButton radioButton_2"},
    {"widget_13", "QWidget", "widget_6"},
    {"widget_20", "QPushButton", "pushButton_6 btn_jhq0..11"},
    {"widget_20", "QLabel", "label_5"},
    {"widget_24", "QSlider", "verticalSlider_10..19"},
    {"widget_24", "QLabel", "jhq_lab_10..20 label_157"},
    {"widget_24", "QComboBox", "comboBox"},
    {"widget_24", "QPushButton", "pushButton_24..26"},
    {"widget_29", "QPushButton", "pushButton_32..33 pushButton_27 btn_env1..4 btn_room1..3"},
    {"widget_29", "QLabel", "label_175..177 label_205 label_207 label_7 label_188..190 label_204"},
    {"widget_29", "QComboBox", "comboBox_2"},
    {"page4_top", "QPushButton", "pushButton_14"},
    {"page4_top", "QLabel", "label_8 label_17"},
    {"People_Round", "QLabel", "round page4_Label_C page4_Label_L page4_Label_R page4_Label_LS"},
    {"People_Round", "QLabel", "page4_Label_RS page4_Label_LB page4_Label_RB page4_Label_W"},
    {"frame", "QSlider", "page4_L page4_R page4_LS page4_RS page4_LB page4_RB page4_c page4_w"},
    {"frame", "QLabel", "L_V R_V LS_V RS_V LB_V RB_V C_V W_V"},
    {"page_5", "QPushButton", "Page4_P_1..7"},
    {"frame_2", "QSlider", "horizontalSlider_14"},
    {"widget_37", "QPushButton", "pushButton_28"},
    {"widget_37", "QLabel", "label_203 label_206"},
    {"widget_8", "QPushButton", "pushButton_5 pushButton_15..16 btn_install_mic btn_uninstall_mic"},
    {"widget_8", "QLabel", "label_4 label_10 label_14..16"},
    {"widget_8", "QSlider", "verticalSlider verticalSlider_2"},
    {"widget_16", "QRadioButton", "radioButton_3 radioButton_4"},
    {"widget_16", "QWidget", "widget_17"},
    {"widget_40", "QPushButton", "pushButton_8"},
    {"widget_40", "QLabel", "label_18"},
    {"widget_40", "QCheckBox", "checkBox_5 checkBox_6"},
    {"widget_41", "QPushButton", "btn_mh1..4"},
    {"widget_46", "QPushButton", "Page4_P_8 Page4_P_9 pushButton_30"},
    {"widget_46", "QSlider", "horizontalSlider_15"},
    {"widget_43", "QPushButton", "pushButton_29"},
    {"widget_43", "QLabel", "label_224 label_208"},
    {"widget_50", "QPushButton", "pushButton_31"},
    {"widget_50", "QSlider", "horizontalSlider_17"},
    {"widget_44", "QPushButton", "pushButton_34..40 pushButton_43 pushButton_9 pushButton_palette"},
    {"widget_44", "QLabel", "label_225 label_226 label_229 label_234..236 label_color_pat label_color_pat_2"},
    {"widget_44", "QComboBox", "comboBox_3"},
    {"widget_44", "QSlider", "horizontalSlider_18"},
    {"widget_44", "QLineEdit", "lineEdit lineEdit_2 lineEdit_3 lineEdit_5"},
    {"widget_45", "QLabel", "label_239 label_241"},
    {"widget_45", "QLineEdit", "lineEdit_4"},
    {"widget_45", "QPushButton", "pushButton_10..11 pushButton_17..18"},
    {"widget_45", "QProgressBar", "progressBar"},
    {"widget_53", "QLabel",
     "label_133 label_147..150 label_152 label_154..155 label_158 label_227..228 label_240"},
    {"widget_53", "QSlider", "horizontalSlider_16"},
    {"widget_53", "QPushButton", "pushButton_13"},
};

TEST_F(FormTest, HasEveryObjectOnceInItsPlaceAndClass) {
    for (const auto &row : kObjects) {
        const QWidget *parent =
            qstrcmp(row.parent, "demoClass") == 0 ? &window : find(QString::fromLatin1(row.parent));
        for (const QString &name : expanded(row.names)) {
            SCOPED_TRACE(name.toStdString());
            EXPECT_EQ(window.findChildren<QObject *>(name).size(), 1);
            const QWidget *widget = find(name);
            ASSERT_NE(widget, nullptr);
            EXPECT_STREQ(widget->metaObject()->className(), row.className);
            EXPECT_TRUE(parent->isAncestorOf(widget)) << "not in " << row.parent;
        }
    }
    EXPECT_EQ(window.objectName(), QLatin1String("demoClass"));
}

TEST_F(FormTest, StacksTwelvePagesInTheOrderOfTheNavigation) {
    const char *const pages[][2] = {
        {"page_1", "widget_12"}, {"page_2", "widget_13"},  {"page_3", "widget_20"},  {"page_4", "widget_29"},
        {"page_5", "page4_top"}, {"page_6", "widget_37"},  {"page_7", "widget_8"},   {"page_8", "widget_16"},
        {"page_9", "widget_40"}, {"page_10", "widget_43"}, {"page_11", "widget_44"}, {"page", "widget_45"},
    };
    ASSERT_EQ(form.stackedWidget->count(), 12);
    EXPECT_EQ(form.stackedWidget->currentIndex(), 2);
    for (int i = 0; i < 12; ++i) {
        const QWidget *content = find(QString::fromLatin1(pages[i][1]));
        EXPECT_EQ(form.stackedWidget->widget(i)->objectName(), QLatin1String(pages[i][0]));
        EXPECT_EQ(content->parentWidget(), form.stackedWidget->widget(i));
        EXPECT_EQ(content->geometry(), QRect(0, 0, i == 4 ? 781 : 778, 513)) << pages[i][1];
    }
}

TEST_F(FormTest, LaysTheWindowOut) {
    QFile sheet(QStringLiteral(":/styles/panel.qss"));
    ASSERT_TRUE(sheet.open(QIODevice::ReadOnly));
    form.centralWidget->setStyleSheet(QString::fromUtf8(sheet.readAll()));
    window.show();
    QCoreApplication::processEvents();
    EXPECT_EQ(window.size(), QSize(1071, 869));
    EXPECT_EQ(form.widget_left->width(), 206);
    EXPECT_EQ(form.widget_top->height(), 69);
    EXPECT_EQ(form.stackedWidget->size(), QSize(778, 513));
    // The status strip stands below the pages and whole inside the window.
    const QRect strip(form.widget_53->mapTo(&window, QPoint(0, 0)), form.widget_53->size());
    EXPECT_GE(strip.top(), form.stackedWidget->mapTo(&window, QPoint(0, 513)).y() + 20);
    EXPECT_TRUE(form.centralWidget->geometry().contains(strip));
}

TEST_F(FormTest, CarriesTheExchangedTextsInOwnStyleSheets) {
    const struct {
        const char *names;
        const char *text;
    } rows[] = {
        {"bt_y0..11", "background-color: none;"},
        {"pushButton_5..8 pushButton_14 pushButton_27..29 pushButton_32..34",
         "background-image: url(:/right/png/btn_close.png);"},
        {"pushButton_12..13 pushButton_15..16", "background-image: url(:/left/png/y1.png);"},
        {"pushButton_4", "background-image: url(:/right/png/icon_lock_open.png);"},
        {"btn_room1..3 btn_env1..4 btn_mh1..4", "border: none;"},
        {"btn_jhq0..11", "background: rgba(0,0,0,1);"},
        {"Page4_P_1..5", "background: rgba(26,26,26,1);"},
        {"label_148 label_150 label_152 label_175..177 label_5 label_8 label_203", "color: #FFFFFF;"},
        {"label_208", "border-image: url(:/right/png/jiangzao_pic.png);"},
        {"pushButton_palette", "background: transparent;border: none;"},
    };
    for (const auto &row : rows)
        for (const QString &name : expanded(row.names))
            EXPECT_EQ(find(name)->styleSheet(), QLatin1String(row.text)) << name.toStdString();
}

} // namespace
