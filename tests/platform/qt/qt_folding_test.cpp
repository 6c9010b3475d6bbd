// What gives way in a window that becomes smaller, and in which order.

#include "platform/qt/qt_folded_figures.h"
#include "platform/qt/qt_form1.h"
#include "platform/qt/qt_test_tools.h"

#include <QMainWindow>
#include <QMenu>
#include <QPushButton>
#include <algorithm>
#include <vector>

namespace cuedrill::platform::qt {

namespace {

class QtFoldingTest : public QtTest {
protected:
    QtFoldingTest()
    {
        Screen screen;
        screen.lab_total.text = "Total";
        screen.panel_total.text = "13";
        screen.lab_nr_unpassed.text = "q. unpassed (level <5)";
        screen.panel_nr_unpassed.text = "10";
        screen.panel_dialog.text = "Do you want to see the answer?";
        form1.screen.show(screen);
        const char* const captions[] = {
            "Next &Question", "Show &Answer", "Show &Stats", "Show &Hints", "Let me &Type", "+", "-",
            "&Edit",          "&Insert",      "&Save",       "&Delete"};
        for (std::size_t i = 0; i < form1.pb.size(); ++i)
            form1.pb[i]->set_caption(captions[i]);
        form1.window.show();
    }

    void resize(int width, int height)
    {
        window.widget().resize(width, height);
        for (int turn = 0; turn < 3; ++turn)
            QCoreApplication::processEvents();
    }

    bool shows(const char* name) { return widget(name).isVisible(); }

    QWidget& widget(const char* name) { return *window.widget().findChild<QWidget*>(QLatin1String(name)); }

    int toolbar_rows()
    {
        std::vector<int> tops;
        for (int number = 1; number <= toolbar_buttons; ++number) {
            const QWidget& button = widget(("pb_" + std::to_string(number)).c_str());
            if (button.isVisible() && std::find(tops.begin(), tops.end(), button.y()) == tops.end())
                tops.push_back(button.y());
        }
        return static_cast<int>(tops.size());
    }

    QtGuard guard;
    QtForm1 window{guard};
    Form1& form1 = window.controls();
};

TEST_F(QtFoldingTest, NothingFoldsInTheFirstWindow)
{
    resize(1000, 720);
    EXPECT_TRUE(shows("panel_level_0"));
    EXPECT_TRUE(shows("lab_total"));
    EXPECT_TRUE(shows("lab_fails"));
    EXPECT_FALSE(shows("folded_statistics"));
    EXPECT_FALSE(shows("more_commands"));
    EXPECT_EQ(toolbar_rows(), 1);
}

TEST_F(QtFoldingTest, TheStatisticsGoFirstThenTheFiguresOfTheQuestion)
{
    resize(1000, 720);
    int height = 720;
    const auto shrink_while = [&](const char* name) {
        while (height > 150 && shows(name))
            resize(1000, height -= 10);
    };
    shrink_while("panel_level_0");
    EXPECT_TRUE(shows("folded_statistics"));
    EXPECT_TRUE(shows("lab_fails"));
    shrink_while("lab_fails");
    EXPECT_TRUE(shows("folded_statistics"));
    EXPECT_TRUE(shows("lab_q"));
    shrink_while("folded_statistics");
    EXPECT_TRUE(shows("lab_q"));
    EXPECT_TRUE(shows("pb_1"));
    shrink_while("lab_q");
    EXPECT_TRUE(shows("pb_1"));
    shrink_while("pb_1");
    for (const char* name : {"Text_q", "Text_a", "panel_dialog", "dialog_strip", "P_status"})
        EXPECT_TRUE(shows(name)) << name;
    resize(1000, 720);
    for (const char* name : {"panel_level_0", "lab_fails", "lab_q", "pb_1"})
        EXPECT_TRUE(shows(name)) << name << " is not there again";
    EXPECT_FALSE(shows("folded_statistics"));
}

TEST_F(QtFoldingTest, InANarrowWindowTheToolbarHasTwoRows)
{
    resize(560, 600);
    EXPECT_EQ(toolbar_rows(), 2);
    EXPECT_FALSE(shows("more_commands"));
    for (int number = 1; number <= toolbar_buttons; ++number)
        EXPECT_TRUE(shows(("pb_" + std::to_string(number)).c_str()));
}

TEST_F(QtFoldingTest, TheButtonsThatDoNotFitAreInAMenu)
{
    int clicks = 0;
    form1.pb[10]->on_click = [&] { ++clicks; };
    form1.pb[9]->set_enabled(false);
    resize(340, 220);
    ASSERT_TRUE(shows("more_commands"));
    EXPECT_EQ(widget("more_commands").accessibleName(), "More commands");
    EXPECT_FALSE(shows("pb_11"));
    auto& menu = *static_cast<QPushButton&>(widget("more_commands")).menu();
    // The menu is filled when it opens.
    menu.popup(QPoint());
    QAction* const last = menu.actions().last();
    EXPECT_EQ(last->text(), "&Delete");
    EXPECT_FALSE(menu.actions().at(menu.actions().size() - 2)->isEnabled());
    last->trigger();
    EXPECT_EQ(clicks, 0) << "the menu is still open";
    menu.close();
    QCoreApplication::processEvents();
    EXPECT_EQ(clicks, 1);
}

TEST_F(QtFoldingTest, AHintHasRoomWhereTheStatisticsAreFolded)
{
    resize(1000, 400);
    ASSERT_TRUE(shows("folded_statistics"));
    form1.frame_stats.set_visible(false);
    form1.panel_lista.set_visible(true);
    resize(1000, 401);
    EXPECT_GE(widget("t_hint").height(), 2 * widget("t_hint").fontMetrics().lineSpacing());
    EXPECT_GE(widget("Text_q").height(), 2 * widget("Text_q").fontMetrics().lineSpacing());
}

TEST_F(QtFoldingTest, TheFoldedStatisticsShowWholeFiguresOnlyAndTheToolTipAll)
{
    auto& line = static_cast<FoldedFigures&>(widget("folded_statistics"));
    resize(1000, 400);
    EXPECT_EQ(line.text().section("   \u00b7   ", 0, 1), "Total 13   \u00b7   q. unpassed (level <5) 10");
    line.resize(line.fontMetrics().horizontalAdvance("Total 13   \u00b7   q. unpassed"), line.height());
    EXPECT_EQ(line.shown_text(), "Total 13");
    line.resize(3, line.height());
    EXPECT_EQ(line.shown_text(), "");
    EXPECT_TRUE(line.toolTip().contains("q. unpassed"));
}

TEST_F(QtFoldingTest, TheFoldedStatisticsSayWhatIsDueOnceThatIsCounted)
{
    const auto& line = static_cast<FoldedFigures&>(widget("folded_statistics"));
    EXPECT_FALSE(line.text().contains("Due"));
    Screen screen;
    screen.due_picture.bars[0].figure = "3";
    screen.due_picture.bars[1].figure = "5";
    screen.due_picture.bars.back().figure = "40";
    form1.screen.show(screen);
    EXPECT_EQ(line.text().section("   \u00b7   ", 2, 2), "Due now 3, later today 5, new 40");
}

TEST_F(QtFoldingTest, TheGroupsOfTheToolbarStandApartAndInARowOfTheirOwn)
{
    const auto space_before = [&](int number) {
        const QRect left = widget(("pb_" + std::to_string(number - 1)).c_str()).geometry();
        return widget(("pb_" + std::to_string(number)).c_str()).x() - left.right() - 1;
    };
    resize(1000, 720);
    for (int number = 2; number <= toolbar_buttons; ++number)
        EXPECT_EQ(space_before(number), number == 6 || number == 8 ? 16 : 1) << number;
    resize(560, 600);
    EXPECT_EQ(widget("pb_8").x(), 0) << "Edit begins the second row";
    EXPECT_EQ(widget("pb_7").y(), widget("pb_1").y());
    EXPECT_EQ(space_before(6), 16);
}

TEST_F(QtFoldingTest, BetweenTheGroupsOfTheToolbarIsAsMuchSpaceAsThereIsRoomFor)
{
    const auto space = [&] { return widget("pb_6").x() - widget("pb_5").geometry().right() - 1; };
    const auto last = [&] { return widget("pb_11").geometry().right() + 1; };
    resize(1000, 720);
    const int margins = 1000 - widget("pb_1").parentWidget()->width();
    const int needed = last() + margins;
    resize(needed, 720);
    EXPECT_EQ(space(), 16);
    resize(needed - 2, 720);
    EXPECT_EQ(space(), 15);
    resize(needed - 20, 720);
    EXPECT_EQ(space(), 6);
    EXPECT_EQ(toolbar_rows(), 1);
    resize(needed - 21, 720);
    EXPECT_EQ(toolbar_rows(), 2);
    EXPECT_EQ(space(), 16);
}

TEST_F(QtFoldingTest, ThePromptStandsAboveTheButtonsWhereItsCaptionsNeedTheWidth)
{
    form1.bot_yes.set_caption("Yes");
    form1.bot_no.set_caption("No, ask another question");
    form1.bot_other.set_visible(false);
    resize(1000, 720);
    EXPECT_GT(widget("dialog_strip").x(), widget("panel_dialog").geometry().right());
    resize(360, 400);
    EXPECT_GT(widget("dialog_strip").y(), widget("panel_dialog").geometry().bottom());
    EXPECT_EQ(widget("dialog_strip").width(), widget("panel_dialog").width());
}

} // namespace

} // namespace cuedrill::platform::qt
