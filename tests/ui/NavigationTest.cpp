#include "ui/Navigation.h"

#include <gtest/gtest.h>
#include <QApplication>
#include <QSignalSpy>

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

TEST_F(NavigationTest, StartsOnPage0AndOffersEightPages) {
    const Navigation navigation(window, pages, nullptr);
    EXPECT_EQ(0, pages.currentIndex());
    EXPECT_TRUE(highlighted().isEmpty());
    QList<int> hidden;
    for (int i = 0; i < 12; ++i) {
        if (buttons[i]->isHidden())
            hidden.append(i);
    }
    EXPECT_EQ((QList<int>{1, 5, 7, 10}), hidden);
}

TEST_F(NavigationTest, HighlightFollowsClicksAndASecondClickRemovesIt) {
    const Navigation navigation(window, pages, nullptr);
    const struct {
        int click;
        QList<int> highlighted;
    } steps[] = {{2, {2}}, {4, {4}}, {4, {}}, {4, {}}, {0, {0}}, {11, {11}}, {11, {}}, {2, {2}}};
    for (const auto &step : steps) {
        buttons[step.click]->click();
        EXPECT_EQ(step.click, pages.currentIndex());
        EXPECT_EQ(step.highlighted, highlighted()) << step.click;
        for (int i = 0; i < 12; ++i)
            EXPECT_EQ(i == step.click, buttons[i]->property("currentPage").toBool()) << i;
    }
}

} // namespace
