#include "ui/Navigation.h"

#include "ui/pages/PageTest.h"

using NavigationTest = PageTest;

TEST_F(NavigationTest, HighlightFollowsClicksAndASecondClickRemovesIt) {
    const Navigation navigation(window, *form.stackedWidget, nullptr);
    EXPECT_EQ(0, form.stackedWidget->currentIndex());
    for (const int hidden : {1, 5, 7, 10})
        EXPECT_TRUE(navigation.button(hidden)->isHidden());
    const struct {
        int click;
        int highlighted; // -1: none
    } steps[] = {{2, 2}, {4, 4}, {4, -1}, {4, -1}, {0, 0}, {11, 11}};
    for (const auto &step : steps) {
        navigation.button(step.click)->click();
        EXPECT_EQ(step.click, form.stackedWidget->currentIndex());
        for (int i = 0; i < 12; ++i) {
            EXPECT_EQ(i == step.click, navigation.button(i)->property("currentPage").toBool()) << i;
            EXPECT_EQ(QLatin1String(i == step.highlighted ? "background-color: rgba(110, 110, 110, 0.9);"
                                                          : "background-color: none;"),
                      navigation.button(i)->styleSheet())
                << i << " after " << step.click;
        }
    }
}
