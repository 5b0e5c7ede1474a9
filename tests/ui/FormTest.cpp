// The form of the main window as its users rely on it: code finds controls by name and pages by index, and
// shows states by exchanging texts of a widget's own style sheet.
#include "ui_demoClass.h"

#include <gtest/gtest.h>

#include <QSet>

namespace {

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

class FormTest : public testing::Test {
protected:
    FormTest() {
        form.setupUi(&window);
        window.show(); // settles the layouts
    }

    // Calls check(widget) for each of the names, which must stand for one widget of this type.
    template<typename Widget, typename Check>
    void forEach(const char *names, Check check) {
        for (const QString &name : expanded(names)) {
            SCOPED_TRACE(name.toStdString());
            const QList<Widget *> found = window.findChildren<Widget *>(name);
            EXPECT_EQ(found.size(), 1);
            if (!found.isEmpty())
                check(*found.first());
        }
    }

    QMainWindow window;
    Ui::demoClass form;
};

constexpr QRect sized(int width, int height) {
    return {-1, -1, width, height};
}

const struct {
    const char *parent; // any ancestor: layouts and frames in between are free
    const char *className;
    const char *names;
    QRect place = {}; // empty: free; sized(): the size alone is fixed
} kObjects[] = {
    {"centralWidget", "QWidget", "widget_left widget_right"},
    {"widget_right", "QWidget", "widget_top widget_mbtm"},
    {"widget_mbtm", "QStackedWidget", "stackedWidget", sized(778, 513)},
    {"widget_mbtm", "QWidget", "widget_btm"},
    {"widget_btm", "QWidget", "widget_53", sized(778, 146)},
    {"widget_top", "QPushButton", "pushButton pushButton_1..3"},

    {"widget_left", "QWidget", "widget_4", {10, 5, 181, 151}},
    {"widget_left", "QLabel", "label", {40, 10, 111, 16}},
    {"widget_left", "QWidget", "widget", {23, 170, 158, 260}},
    {"widget_left", "QWidget", "widget_3", {23, 480, 164, 221}},
    {"widget_left", "QWidget", "widget_7", {30, 700, 158, 111}},
    {"widget", "QLabel", "label_2"},
    {"widget", "QPushButton", "bt_y0..5"},
    {"widget_3", "QLabel", "label_3"},
    {"widget_3", "QPushButton", "bt_y6..9"},
    {"widget_7", "QLabel", "label_19", {30, 14, 101, 17}},
    {"widget_7", "QPushButton", "bt_y10", {30, 30, 111, 30}},
    {"widget_7", "QPushButton", "bt_y11", {30, 66, 111, 30}},

    {"page_1", "QWidget", "widget_12", {0, 0, 778, 513}},
    {"widget_12", "QLabel", "label_13 label_54 label_56"},
    {"widget_12", "QSlider", "verticalSlider_4", {244, 110, 24, 281}},
    {"widget_12", "QWidget", "widget_5", {415, 62, 123, 372}},
    {"widget_12", "QPushButton", "pushButton_12", sized(23, 23)},
    {"widget_12", "QPushButton", "pushButton_7", sized(51, 41)},
    {"widget_12", "QPushButton", "btn_install_spk btn_uninstall_spk"},
    {"widget_5", "QLabel", "label_55 label_57 label_59 label_60"},
    {"widget_5", "QSlider", "verticalSlider_5 verticalSlider_7"},
    {"widget_5", "QPushButton", "pushButton_4", sized(16, 16)},

    {"page_2", "QWidget", "widget_13", {0, 0, 778, 513}},
    {"widget_13", "QRadioButton", "radioButton radioButton_2"},
    {"widget_13", "QWidget", "widget_6", {104, 140, 569, 258}},

    {"page_3", "QWidget", "widget_20", {0, 0, 778, 513}},
    {"widget_20", "QPushButton", "pushButton_6"},
    {"widget_20", "QLabel", "label_5"},
    {"widget_21", "QPushButton", "btn_jhq0..11"},
    {"widget_24", "QSlider", "verticalSlider_10..19"},
    {"widget_24", "QLabel", "jhq_lab_10..20 label_157"},
    {"widget_24", "QComboBox", "comboBox", {299, 20, 173, 29}},
    {"widget_24", "QPushButton", "pushButton_24..26", sized(16, 16)},

    {"page_4", "QWidget", "widget_29", {0, 0, 778, 513}},
    {"widget_29", "QPushButton", "pushButton_32..33 pushButton_27"},
    {"widget_29", "QLabel", "label_175..177 label_205 label_7 label_188..190 label_204"},
    {"widget_29", "QLabel", "label_207", {30, 140, 461, 271}},
    {"widget_29", "QComboBox", "comboBox_2"},
    {"widget_29", "QWidget", "frame_env1..4", sized(48, 48)},
    {"widget_29", "QPushButton", "btn_env1..4", sized(30, 30)},
    {"widget_31", "QPushButton", "btn_room1", sized(94, 94)},
    {"widget_31", "QPushButton", "btn_room2", sized(112, 112)},
    {"widget_31", "QPushButton", "btn_room3", sized(134, 134)},

    {"page_5", "QWidget", "page4_top", {0, 0, 781, 513}},
    {"page4_top", "QPushButton", "pushButton_14"},
    {"page4_top", "QLabel", "label_8 label_17"},
    {"page4_top", "QWidget", "People_Round", {40, 40, 350, 350}},
    {"People_Round", "QLabel", "round page4_Label_C page4_Label_L page4_Label_R page4_Label_LS"},
    {"People_Round", "QLabel", "page4_Label_RS page4_Label_LB page4_Label_RB page4_Label_W"},
    {"page4_top", "QWidget", "frame", {438, 114, 267, 254}},
    {"frame", "QGroupBox", "G_LR G_LR_S G_LR_S_2 G_LR_S_3"},
    {"G_LR", "QSlider", "page4_L page4_R"},
    {"G_LR_S", "QSlider", "page4_LS page4_RS"},
    {"G_LR_S_2", "QSlider", "page4_LB page4_RB"},
    {"G_LR_S_3", "QSlider", "page4_c page4_w"},
    {"frame", "QLabel", "L_V R_V LS_V RS_V LB_V RB_V C_V W_V"},
    {"Page4_P", "QPushButton", "Page4_P_1..5"},
    {"frame_2", "QPushButton", "Page4_P_6 Page4_P_7"},
    {"frame_2", "QSlider", "horizontalSlider_14"},

    {"page_6", "QWidget", "widget_37", {0, 0, 778, 513}},
    {"widget_37", "QPushButton", "pushButton_28"},
    {"widget_37", "QLabel", "label_203"},
    {"widget_37", "QLabel", "label_206", {83, 111, 612, 341}},

    {"page_7", "QWidget", "widget_8", {0, 0, 778, 513}},
    {"widget_8", "QPushButton", "pushButton_5 pushButton_15..16 btn_install_mic btn_uninstall_mic"},
    {"widget_8", "QLabel", "label_4 label_10 label_14..16"},
    {"widget_8", "QSlider", "verticalSlider verticalSlider_2"},

    {"page_8", "QWidget", "widget_16", {0, 0, 778, 513}},
    {"widget_16", "QRadioButton", "radioButton_3..4"},
    {"widget_16", "QWidget", "widget_17"},

    {"page_9", "QWidget", "widget_40", {0, 0, 778, 513}},
    {"widget_40", "QPushButton", "pushButton_8"},
    {"widget_40", "QLabel", "label_18"},
    {"widget_40", "QCheckBox", "checkBox_5..6"},
    {"widget_41", "QPushButton", "btn_mh1..4", sized(75, 74)},
    {"widget_46", "QPushButton", "Page4_P_8..9 pushButton_30"},
    {"widget_46", "QSlider", "horizontalSlider_15"},

    {"page_10", "QWidget", "widget_43", {0, 0, 778, 513}},
    {"widget_43", "QPushButton", "pushButton_29"},
    {"widget_43", "QLabel", "label_224 label_208"},
    {"widget_50", "QPushButton", "pushButton_31"},
    {"widget_50", "QSlider", "horizontalSlider_17"},

    {"page_11", "QWidget", "widget_44", {0, 0, 778, 513}},
    {"widget_44", "QLabel", "label_225..226 label_229 label_234..236 label_color_pat_2"},
    {"widget_44", "QLabel", "label_color_pat", sized(256, 256)},
    {"widget_44", "QPushButton", "pushButton_palette", sized(256, 256)},
    {"widget_44", "QPushButton", "pushButton_35..40 pushButton_43", sized(17, 17)},
    {"widget_44", "QPushButton", "pushButton_34 pushButton_9"},
    {"widget_44", "QComboBox", "comboBox_3"},
    {"widget_44", "QSlider", "horizontalSlider_18"},
    {"widget_44", "QLineEdit", "lineEdit lineEdit_2..3 lineEdit_5"},

    {"page", "QWidget", "widget_45", {0, 0, 778, 513}},
    {"widget_45", "QLabel", "label_239 label_241"},
    {"widget_45", "QLineEdit", "lineEdit_4"},
    {"widget_45", "QPushButton", "pushButton_10..11 pushButton_17..18"},
    {"widget_45", "QProgressBar", "progressBar", {80, 310, 581, 23}},

    {"widget_53", "QLabel", "label_133 label_147..150 label_152 label_154..155 label_158"},
    {"widget_53", "QLabel", "label_227..228 label_240"},
    {"widget_53", "QSlider", "horizontalSlider_16"},
    {"widget_53", "QPushButton", "pushButton_13", sized(23, 22)},
};

TEST_F(FormTest, HasEveryObjectInItsPlaceAndClass) {
    for (const auto &row : kObjects) {
        const auto *parent = window.findChild<QWidget *>(QString::fromLatin1(row.parent));
        ASSERT_NE(parent, nullptr) << row.parent;
        forEach<QWidget>(row.names, [&](const QWidget &widget) {
            EXPECT_STREQ(widget.metaObject()->className(), row.className);
            EXPECT_TRUE(parent->isAncestorOf(&widget)) << "not in " << row.parent;
            QRect wanted = row.place.isNull() ? widget.geometry() : row.place;
            if (wanted.x() < 0)
                wanted.moveTo(widget.pos());
            EXPECT_EQ(widget.geometry(), wanted);
        });
    }
    EXPECT_EQ(window.objectName(), QLatin1String("demoClass"));
    EXPECT_EQ(form.pushButton_palette->geometry(), form.label_color_pat->geometry());
}

TEST_F(FormTest, LaysTheWindowOut) {
    EXPECT_EQ(window.size(), QSize(1071, 869));
    EXPECT_EQ(form.centralWidget->maximumSize(), QSize(1059, 863));
    EXPECT_EQ(form.widget_left->width(), 206);
    EXPECT_EQ(form.widget_top->height(), 69);
    EXPECT_EQ(form.verticalLayout_4->spacing(), 20);
    EXPECT_EQ(form.verticalLayout_4->contentsMargins(), QMargins(20, 20, 20, 0));
    EXPECT_EQ(form.gridLayout_3->spacing(), 6);
    const QRect strip(form.widget_53->mapTo(&window, QPoint(0, 0)), form.widget_53->size());
    EXPECT_TRUE(form.centralWidget->geometry().contains(strip));

    const QStringList pages = expanded("page_1..11 page");
    ASSERT_EQ(form.stackedWidget->count(), pages.size());
    for (int i = 0; i < pages.size(); ++i)
        EXPECT_EQ(form.stackedWidget->widget(i)->objectName(), pages.at(i));
    EXPECT_EQ(form.stackedWidget->currentIndex(), 2);
}

TEST_F(FormTest, GivesTheSlidersTheirRanges) {
    const struct {
        const char *names;
        Qt::Orientation orientation;
        int maximum, value, pageStep;
    } rows[] = {
        {"verticalSlider_4..5 verticalSlider_7", Qt::Vertical, 100, 0, 10},
        {"verticalSlider_10", Qt::Vertical, 80, 0, 10},
        {"verticalSlider_11..19", Qt::Vertical, 80, 10, 10},
        {"page4_L page4_R page4_LS page4_RS page4_LB page4_RB page4_c page4_w", Qt::Horizontal, 99, 40, 1},
        {"horizontalSlider_14 horizontalSlider_18", Qt::Horizontal, 99, 50, 1},
        {"verticalSlider verticalSlider_2", Qt::Vertical, 99, 10, 10},
        {"horizontalSlider_15 horizontalSlider_17", Qt::Horizontal, 99, 50, 10},
        {"horizontalSlider_16", Qt::Horizontal, 100, 0, 10},
    };
    for (const auto &row : rows)
        forEach<QSlider>(row.names, [&](const QSlider &slider) {
            EXPECT_EQ(slider.orientation(), row.orientation);
            EXPECT_EQ(slider.minimum(), 0);
            EXPECT_EQ(slider.maximum(), row.maximum);
            EXPECT_EQ(slider.value(), row.value);
            EXPECT_EQ(slider.pageStep(), row.pageStep);
        });
}

TEST_F(FormTest, LetsTheKeyboardReachAndTheScreenReaderNameEveryControl) {
    QSet<const QWidget *> chain;
    for (const QWidget *at = window.nextInFocusChain(); at != &window; at = at->nextInFocusChain())
        chain.insert(at);
    for (const QWidget *widget : window.findChildren<QWidget *>()) {
        const auto *field = qobject_cast<const QLineEdit *>(widget);
        if (!qobject_cast<const QAbstractButton *>(widget) && !qobject_cast<const QComboBox *>(widget) &&
            (!field || qobject_cast<QComboBox *>(field->parentWidget())))
            continue;
        SCOPED_TRACE(widget->objectName().toStdString());
        EXPECT_TRUE(widget->focusPolicy() & Qt::TabFocus);
        EXPECT_TRUE(chain.contains(widget));
        const bool textFromCode = widget == form.btn_jhq9 || widget == form.btn_jhq10;
        EXPECT_TRUE(textFromCode || !widget->accessibleName().isEmpty() ||
                    !widget->property("text").toString().isEmpty());
    }
}

} // namespace
