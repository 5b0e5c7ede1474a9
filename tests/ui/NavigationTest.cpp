#include "ui/Navigation.h"

#include <gtest/gtest.h>
#include <QApplication>

namespace {

const QString kPlain = QStringLiteral("color: white; background-color: none; border: none;");
const QString kHighlight =
    QStringLiteral("color: white; background-color: rgba(110, 110, 110, 0.9); border: none;");

class NavigationTest : public testing::Test {
protected:
    NavigationTest() {
        for (int i = 0; i < 12; ++i) {
            auto *button = new QPushButton(&window);
            button->setObjectName(QStringLiteral("bt_y%1").arg(i));
            button->setStyleSheet(kPlain);
            buttons.append(button);
            pages.addWidget(new QWidget);
        }
        pages.setCurrentIndex(2);
    }

    // Numbers of the highlighted buttons.
    QList<int> highlighted() const {
        QList<int> result;
        for (int i = 0; i < buttons.size(); ++i) {
            if (buttons[i]->styleSheet() == kHighlight)
                result.append(i);
            else
                EXPECT_EQ(kPlain, buttons[i]->styleSheet());
        }
        return result;
    }

    QWidget window;
    QStackedWidget pages{&window};
    QList<QPushButton *> buttons;
};

TEST_F(NavigationTest, HighlightFollowsClicksAndASecondClickRemovesIt) {
    const Navigation navigation(window, pages, nullptr);
    EXPECT_EQ(0, pages.currentIndex());
    EXPECT_TRUE(highlighted().isEmpty());
    for (int i = 0; i < 12; ++i)
        EXPECT_EQ(i == 1 || i == 5 || i == 7 || i == 10, buttons[i]->isHidden()) << i;
    const struct {
        int click;
        QList<int> highlighted;
    } steps[] = {{2, {2}}, {4, {4}}, {4, {}}, {4, {}}, {0, {0}}, {11, {11}}};
    for (const auto &step : steps) {
        buttons[step.click]->click();
        EXPECT_EQ(step.click, pages.currentIndex());
        EXPECT_EQ(step.highlighted, highlighted()) << step.click;
        EXPECT_TRUE(buttons[step.click]->property("currentPage").toBool());
    }
}

} // namespace
