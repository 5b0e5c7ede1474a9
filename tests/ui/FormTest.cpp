// The form of the main window as its users rely on it: code finds controls by name, pages by index, and shows
// states by exchanging texts of a widget's own style sheet. One table per kind of promise.
#include "ui_demoClass.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QSet>
#include <QTextDocument>
#include <QTranslator>

namespace {

class FormTest : public testing::Test {
protected:
    FormTest() { form.setupUi(&window); }

    QWidget *find(const QString &name) {
        auto *found = window.findChild<QWidget *>(name);
        EXPECT_NE(found, nullptr) << name.toStdString();
        return found;
    }

    template<typename Widget>
    Widget *find(const char *name) {
        return qobject_cast<Widget *>(find(QString::fromLatin1(name)));
    }

    // The panel as it is shown, with its style sheet; fonts and layouts are settled.
    void show() {
        QFile sheet(QStringLiteral(":/styles/panel.qss"));
        ASSERT_TRUE(sheet.open(QIODevice::ReadOnly));
        form.centralWidget->setStyleSheet(QString::fromUtf8(sheet.readAll()));
        window.show();
        QCoreApplication::processEvents();
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
    {"widget", "QPushButton", "bt_y0..5"},
    {"widget_3", "QPushButton", "bt_y6..9"},
    {"widget_7", "QPushButton", "bt_y10..11"},
    {"widget_12", "QLabel", "label_13 label_54..57 label_59 label_60"},
    {"widget_12", "QSlider", "verticalSlider_4"},
    {"widget_5", "QSlider", "verticalSlider_5 verticalSlider_7"},
    {"widget_5", "QPushButton", "pushButton_4"},
    {"widget_12", "QPushButton", "pushButton_7 pushButton_12 btn_install_spk btn_uninstall_spk"},
    {"widget_13", "QRadioButton", "radioButton radioButton_2"},
    {"widget_13", "QWidget", "widget_6"},
    {"widget_20", "QPushButton", "pushButton_6"},
    {"widget_20", "QLabel", "label_5"},
    {"widget_21", "QPushButton", "btn_jhq0..11"},
    {"widget_24", "QSlider", "verticalSlider_10..19"},
    {"widget_24", "QLabel", "jhq_lab_10..20 label_157"},
    {"widget_24", "QComboBox", "comboBox"},
    {"widget_24", "QPushButton", "pushButton_24..26"},
    {"widget_29", "QPushButton", "pushButton_32..33 pushButton_27 btn_env1..4"},
    {"widget_29", "QLabel", "label_175..177 label_205 label_207 label_7 label_188..190 label_204"},
    {"widget_29", "QComboBox", "comboBox_2"},
    {"widget_31", "QPushButton", "btn_room1..3"},
    {"page4_top", "QPushButton", "pushButton_14"},
    {"page4_top", "QLabel", "label_8 label_17"},
    {"People_Round", "QLabel",
     "round page4_Label_C page4_Label_L page4_Label_R page4_Label_LS page4_Label_RS page4_Label_LB "
     "page4_Label_RB "
     "page4_Label_W"},
    {"frame", "QGroupBox", "G_LR G_LR_S G_LR_S_2 G_LR_S_3"},
    {"G_LR", "QSlider", "page4_L page4_R"},
    {"G_LR_S", "QSlider", "page4_LS page4_RS"},
    {"G_LR_S_2", "QSlider", "page4_LB page4_RB"},
    {"G_LR_S_3", "QSlider", "page4_c page4_w"},
    {"frame", "QLabel", "L_V R_V LS_V RS_V LB_V RB_V C_V W_V"},
    {"Page4_P", "QPushButton", "Page4_P_1..5"},
    {"frame_2", "QPushButton", "Page4_P_6 Page4_P_7"},
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

const struct {
    const char *name;
    QRect geometry;
} kGeometries[] = {
    {"widget_4", {10, 5, 181, 151}},
    {"label", {40, 10, 111, 16}},
    {"widget", {23, 170, 158, 260}},
    {"widget_3", {23, 480, 164, 221}},
    {"widget_7", {30, 700, 158, 111}},
    {"label_19", {30, 14, 101, 17}},
    {"bt_y10", {30, 30, 111, 30}},
    {"bt_y11", {30, 66, 111, 30}},
    {"verticalSlider_4", {244, 110, 24, 281}},
    {"widget_5", {415, 62, 123, 372}},
    {"widget_6", {104, 140, 569, 258}},
    {"comboBox", {299, 20, 173, 29}},
    {"label_207", {30, 140, 461, 271}},
    {"People_Round", {40, 40, 350, 350}},
    {"frame", {438, 114, 267, 254}},
    {"label_206", {83, 111, 612, 341}},
    {"progressBar", {80, 310, 581, 23}},
};

const struct {
    const char *names;
    QSize size;
} kSizes[] = {
    {"pushButton_4 pushButton_24..26", {16, 16}},
    {"pushButton_12", {23, 23}},
    {"pushButton_7", {51, 41}},
    {"pushButton_13", {23, 22}},
    {"btn_room1", {94, 94}},
    {"btn_room2", {112, 112}},
    {"btn_room3", {134, 134}},
    {"btn_env1..4", {30, 30}},
    {"btn_mh1..4", {75, 74}},
    {"label_color_pat pushButton_palette", {256, 256}},
    {"pushButton_35..40 pushButton_43", {17, 17}},
    {"widget_53", {778, 146}},
};

TEST_F(FormTest, KeepsTheFixedGeometries) {
    for (const auto &row : kGeometries)
        EXPECT_EQ(find(QString::fromLatin1(row.name))->geometry(), row.geometry) << row.name;
    for (const auto &row : kSizes)
        for (const QString &name : expanded(row.names))
            EXPECT_EQ(find(name)->size(), row.size) << name.toStdString();
    EXPECT_EQ(form.btn_env1->parentWidget()->size(), QSize(48, 48));
    EXPECT_EQ(form.pushButton_palette->geometry(), form.label_color_pat->geometry());
}

TEST_F(FormTest, LaysTheWindowOut) {
    show();
    EXPECT_EQ(window.size(), QSize(1071, 869));
    EXPECT_EQ(form.centralWidget->maximumSize(), QSize(1059, 863));
    EXPECT_EQ(form.widget_left->width(), 206);
    EXPECT_EQ(form.widget_top->height(), 69);
    EXPECT_EQ(form.stackedWidget->size(), QSize(778, 513));
    EXPECT_EQ(form.verticalLayout_4->spacing(), 20);
    EXPECT_EQ(form.verticalLayout_4->contentsMargins(), QMargins(20, 20, 20, 0));
    EXPECT_EQ(form.gridLayout_3->spacing(), 6);
    // The status strip stands below the pages and whole inside the window.
    const QRect strip(form.widget_53->mapTo(&window, QPoint(0, 0)), form.widget_53->size());
    EXPECT_GE(strip.top(), form.stackedWidget->mapTo(&window, QPoint(0, 513)).y() + 20);
    EXPECT_TRUE(form.centralWidget->geometry().contains(strip));
}

const struct {
    const char *names;
    Qt::Orientation orientation;
    int minimum, maximum, value, pageStep;
} kSliders[] = {
    {"verticalSlider_4..5 verticalSlider_7", Qt::Vertical, 0, 100, 0, 10},
    {"verticalSlider_10", Qt::Vertical, 0, 80, 0, 10},
    {"verticalSlider_11..19", Qt::Vertical, 0, 80, 10, 10},
    {"page4_L page4_R page4_LS page4_RS page4_LB page4_RB page4_c page4_w", Qt::Horizontal, 0, 99, 40, 1},
    {"horizontalSlider_14 horizontalSlider_18", Qt::Horizontal, 0, 99, 50, 1},
    {"verticalSlider verticalSlider_2", Qt::Vertical, 0, 99, 10, 10},
    {"horizontalSlider_15 horizontalSlider_17", Qt::Horizontal, 0, 99, 50, 10},
    {"horizontalSlider_16", Qt::Horizontal, 0, 100, 0, 10},
};

TEST_F(FormTest, GivesTheSlidersTheirRanges) {
    for (const auto &row : kSliders)
        for (const QString &name : expanded(row.names)) {
            SCOPED_TRACE(name.toStdString());
            const auto *slider = window.findChild<QSlider *>(name);
            ASSERT_NE(slider, nullptr);
            EXPECT_EQ(slider->orientation(), row.orientation);
            EXPECT_EQ(slider->minimum(), row.minimum);
            EXPECT_EQ(slider->maximum(), row.maximum);
            EXPECT_EQ(slider->value(), row.value);
            EXPECT_EQ(slider->pageStep(), row.pageStep);
        }
}

// The texts of several controls, in the order of their names and parted by '|'.
const struct {
    const char *names;
    const char *texts;
} kTexts[] = {
    {"label label_2 label_3 label_19", "当前版本V 3.0.2|扬声器|麦克风|  其他"},
    {"bt_y0..11",
     "音量控制|取样频率|均衡器|空间音效|声场定位|空间音效|音量控制|取样频率|魔幻音效|降噪|LED调节|升级"},
    {"label_54..57 label_59..60", "扬声器主音量|左|10|10|10|右"},
    {"label_13 btn_install_spk btn_uninstall_spk", "使能Spk驱动|加载SPK驱动|卸载SPK驱动"},
    {"radioButton radioButton_2..4", "44.1 KHz|48 KHz|16 KHz|48 KHz"},
    {"label_5 label_157", "开启均衡器|均衡器自定义："},
    {"btn_jhq0..11",
     "无畏契约|反恐精英|三角洲行动|绝地求生|穿越火线|使命召唤|Apex英雄|守望先锋|低频增强|||默认模式"},
    {"label_100..112", "30|60|120|250|500|1K|2K|4K|8K|16K|20dB|0dB|-20dB"},
    {"label_175..177 label_205 label_7", "启动房间音效|虚拟7.1声道|启动空间音效|房间|环境"},
    {"label_188..190 label_204", "音乐厅|水底|浴室|疯狂"},
    {"label_8 label_17", "启动声场定位|滑动可独立调节各喇叭音量"},
    {"label_203 label_10 label_4 label_14..16", "启动空间音效|使能Mic驱动|麦克风输入|监听音量|-10|-10"},
    {"btn_install_mic btn_uninstall_mic", "加载MIC驱动|打开麦克风监听"},
    {"label_18 checkBox_6 label_210..213 checkBox_5", "魔幻音效|魔幻音效|怪兽|卡通|男人|女人|麦克风回音"},
    {"label_224 label_221..222", "启动降噪|Min (dB)|Max (dB)"},
    {"label_225..226 label_229..231 label_234 pushButton_9", "使能LED调节|速度|发光模式|快|慢|R|调整"},
    {"label_239 pushButton_10..11 pushButton_17..18", "文件|浏览|升级Dongle|升级耳机|检查新版本"},
    {"label_133..137", "Playback|播放|录制|输出|输入"},
    {"label_138..139 label_150..152 label_156 label_159",
     "扬声器|麦克风|空间音效|均衡器|声场定位|魔幻音效|降噪"},
    {"label_148..149 label_155 label_158", "7.1|48 KHz|NU|SF"},
};

QString shownText(const QObject *widget) {
    const QString text = widget->property("text").toString();
    if (!Qt::mightBeRichText(text))
        return text;
    QTextDocument document;
    document.setHtml(text);
    return document.toPlainText();
}

TEST_F(FormTest, ShowsTheSourceTexts) {
    for (const auto &row : kTexts) {
        const QStringList names = expanded(row.names);
        const QStringList texts = QString::fromUtf8(row.texts).split(QLatin1Char('|'));
        ASSERT_EQ(names.size(), texts.size()) << row.names;
        for (int i = 0; i < names.size(); ++i)
            EXPECT_EQ(shownText(find(names.at(i))), texts.at(i)) << names.at(i).toStdString();
    }
    const auto items = [](const QComboBox *box) {
        QStringList all;
        for (int i = 0; i < box->count(); ++i)
            all << box->itemText(i);
        return all.join(QLatin1Char('|'));
    };
    EXPECT_EQ(items(form.comboBox_2), QStringLiteral("音乐厅|水底|浴室|疯狂"));
    EXPECT_EQ(items(form.comboBox_3), QStringLiteral("关闭|常亮|呼吸|循环变色|音乐律动"));
    EXPECT_EQ(form.comboBox_3->currentIndex(), 1);
    EXPECT_EQ(items(form.comboBox), QString());
    EXPECT_TRUE(form.comboBox->isEditable());
    EXPECT_FALSE(form.checkBox_6->isChecked());
    for (const char *rich : {"label_13", "label_10"})
        EXPECT_TRUE(Qt::mightBeRichText(find<QLabel>(rich)->text())) << rich;
}

TEST_F(FormTest, ExplainsPicturesByToolTips) {
    const struct {
        const char *names;
        const char *tips;
    } rows[] = {
        {"pushButton_24..26", "删除选中的EQ曲线|保存EQ曲线|恢复默认曲线"},
        {"label_176..177", "7.1增强竞技类游戏体验|增加三维环绕体验,适合3A游戏,影音娱乐"},
        {"btn_room1..3", "小房间|中房间|大房间"},
        {"Page4_P_1..5", "顺时针|逆时针|角度固定|角度归中|恢复默认值"},
    };
    for (const auto &row : rows) {
        const QStringList names = expanded(row.names);
        const QStringList tips = QString::fromUtf8(row.tips).split(QLatin1Char('|'));
        for (int i = 0; i < names.size(); ++i)
            EXPECT_EQ(find(names.at(i))->toolTip(), tips.at(i)) << names.at(i).toStdString();
    }
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

TEST_F(FormTest, LetsTheKeyboardReachEveryControlButSliders) {
    const auto isControl = [](const QWidget *widget) {
        return qobject_cast<const QAbstractButton *>(widget) || qobject_cast<const QComboBox *>(widget) ||
               (qobject_cast<const QLineEdit *>(widget) &&
                !qobject_cast<QComboBox *>(widget->parentWidget()));
    };
    QSet<const QWidget *> chain;
    for (const QWidget *at = window.nextInFocusChain(); at != &window; at = at->nextInFocusChain())
        chain.insert(at);
    for (const QWidget *widget : window.findChildren<QWidget *>()) {
        if (!isControl(widget))
            continue;
        SCOPED_TRACE(widget->objectName().toStdString());
        EXPECT_TRUE(widget->focusPolicy() & Qt::TabFocus);
        EXPECT_TRUE(chain.contains(widget));
        const bool textFromCode = widget == form.btn_jhq9 || widget == form.btn_jhq10;
        EXPECT_TRUE(textFromCode || !widget->accessibleName().isEmpty() ||
                    !widget->property("text").toString().isEmpty());
    }
}

// Every text fits its control in both languages. Word-wrapped labels may take two lines.
TEST_F(FormTest, ClipsNoText) {
    QTranslator english;
    ASSERT_TRUE(english.load(QStringLiteral("ts_en"), QStringLiteral("Z:" QOR_QM_DIR)));
    show();
    for (const bool translated : {false, true}) {
        if (translated) {
            QCoreApplication::installTranslator(&english);
            form.retranslateUi(&window);
        }
        for (QWidget *widget : window.findChildren<QWidget *>()) {
            const auto *label = qobject_cast<QLabel *>(widget);
            const auto *button = qobject_cast<QAbstractButton *>(widget);
            if ((!label && !button) || shownText(widget).isEmpty())
                continue;
            widget->ensurePolished();
            const QSize needed = label && label->wordWrap() ? QSize(0, label->heightForWidth(label->width()))
                                                            : widget->sizeHint();
            EXPECT_LE(needed.width(), widget->width())
                << widget->objectName().toStdString() << " \"" << shownText(widget).toStdString() << '"';
            EXPECT_LE(needed.height(), widget->height()) << widget->objectName().toStdString();
        }
    }
    QCoreApplication::removeTranslator(&english);
}

} // namespace
