#include "common/errors.h"
#include "platform/qt/qt_form1.h"
#include "platform/qt/qt_test_tools.h"

#include <QFile>
#include <QMainWindow>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTemporaryDir>
#include <csignal>

namespace cuedrill::platform::qt {

namespace {

class QtForm1Test : public QtTest {
protected:
    QWidget& widget(const char* name) { return *window.widget().findChild<QWidget*>(QLatin1String(name)); }

    QtGuard guard;
    QtForm1 window{guard};
    Form1& form1 = window.controls();
};

TEST_F(QtForm1Test, EveryControlIsFoundByItsOwnName)
{
    EXPECT_EQ(window.widget().objectName(), "Form1");
    for (const char* name : {"lab_q",
                             "Text_q",
                             "panel_a",
                             "Text_a",
                             "lab_q_level",
                             "PANEL_Q_LEVEL",
                             "lab_q_attempts",
                             "PANEL_Q_ATTEMPTS",
                             "lab_fails",
                             "PANEL_FAILS",
                             "lab_elapsed",
                             "PANEL_ELAPSED",
                             "frame_stats",
                             "panel_level_0",
                             "panel_level_1",
                             "panel_level_2",
                             "panel_level_3",
                             "panel_level_4",
                             "panel_level_5",
                             "due_picture",
                             "lab_total",
                             "panel_total",
                             "lab_nr_unpassed",
                             "panel_nr_unpassed",
                             "lab_score",
                             "Panel_score",
                             "lab_open_time",
                             "panel_open_time",
                             "lab_time_today",
                             "panel_time_today",
                             "lab_time_ever",
                             "panel_time_ever",
                             "lab_time_now",
                             "Panel_time_now",
                             "panel_dialog",
                             "dialog_strip",
                             "bot_yes",
                             "bot_no",
                             "bot_other",
                             "bot_focus",
                             "P_status",
                             "panel_lista",
                             "t_hint",
                             "listav",
                             "pb_1",
                             "pb_2",
                             "pb_3",
                             "pb_4",
                             "pb_5",
                             "pb_6",
                             "pb_7",
                             "pb_8",
                             "pb_9",
                             "pb_10",
                             "pb_11"})
        EXPECT_EQ(window.widget().findChildren<QWidget*>(QLatin1String(name)).size(), 1) << name;
}

TEST_F(QtForm1Test, EveryInterfaceReachesTheWidgetOfItsName)
{
    Screen screen;
    for (const NamedLine& named : screen_lines)
        (screen.*named.line).description = std::string("about ") + named.name;
    for (std::size_t i = 0; i < screen.panel_level.size(); ++i)
        screen.panel_level[i].description = "Level " + std::to_string(i);
    form1.screen.show(screen);
    for (const NamedLine& named : screen_lines)
        EXPECT_EQ(widget(named.name).accessibleDescription(), QStringLiteral("about ") + QLatin1String(named.name));
    for (std::size_t i = 0; i < screen.panel_level.size(); ++i)
        EXPECT_EQ(widget(("panel_level_" + std::to_string(i)).c_str()).accessibleDescription(),
                  QStringLiteral("Level %1").arg(i));
    form1.Text_q.set_name("Question");
    form1.Text_a.set_name("Answer");
    EXPECT_EQ(widget("Text_q").accessibleName(), "Question");
    EXPECT_EQ(widget("Text_a").accessibleName(), "Answer");
    for (const auto& [button, name] : {std::pair<Button*, const char*>{&form1.bot_yes, "bot_yes"},
                                       {&form1.bot_no, "bot_no"},
                                       {&form1.bot_other, "bot_other"}}) {
        button->set_caption(name);
        EXPECT_EQ(static_cast<QPushButton&>(widget(name)).text(), name);
    }
    for (std::size_t i = 0; i < form1.pb.size(); ++i) {
        const std::string name = "pb_" + std::to_string(i + 1);
        form1.pb[i]->set_caption("Do " + name);
        EXPECT_EQ(static_cast<QPushButton&>(widget(name.c_str())).text().toStdString(), "Do " + name);
    }
    form1.t_hint.set_name("Hint");
    EXPECT_EQ(widget("t_hint").accessibleName(), "Hint");
    form1.listav.set_name("List");
    EXPECT_EQ(widget("listav").accessibleName(), "List");
}

TEST_F(QtForm1Test, TheWindowIsNotShownByItself)
{
    EXPECT_FALSE(window.widget().isVisible());
    EXPECT_EQ(window.widget().size(), QSize(1000, 720));
}

TEST_F(QtForm1Test, TheDialogStripHasItsWidthBeforeTheWindowIsShownAndTellsANewOne)
{
    EXPECT_GT(form1.dialog_strip.width(), 15 * 500);
    EXPECT_LT(form1.dialog_strip.width(), 15 * 700);
    form1.window.show();
    QCoreApplication::processEvents();
    const common::Twips before = form1.dialog_strip.width();
    int resized = 0;
    form1.dialog_strip.on_resize = [&] { ++resized; };
    window.widget().resize(1300, 720);
    QCoreApplication::processEvents();
    EXPECT_GE(resized, 1);
    EXPECT_GT(form1.dialog_strip.width(), before);
    EXPECT_EQ(form1.dialog_strip.width(), 15 * widget("dialog_strip").width());
}

TEST_F(QtForm1Test, CanBeMadeAsSmallAs800By600WhateverItsTextsAre)
{
    const std::string long_text(200, 'W');
    Screen screen;
    for (const NamedLine& named : screen_lines)
        (screen.*named.line).text = long_text;
    form1.screen.show(screen);
    form1.Text_q.set_text(long_text);
    form1.window.show();
    window.widget().resize(800, 600);
    QCoreApplication::processEvents();
    EXPECT_EQ(window.widget().size(), QSize(800, 600));
    EXPECT_GT(widget("Text_q").height(), 100);
    EXPECT_GE(widget("P_status").geometry().bottom(), 500);
}

TEST_F(QtForm1Test, HidingTheHeadingOfTheAnswerHidesAndMovesNothingElse)
{
    form1.window.show();
    QCoreApplication::processEvents();
    const QPoint before = widget("Text_a").mapTo(&window.widget(), QPoint());
    Screen screen;
    screen.panel_a.visible = false;
    form1.screen.show(screen);
    QCoreApplication::processEvents();
    EXPECT_FALSE(widget("panel_a").isVisible());
    EXPECT_TRUE(widget("Text_a").isVisible());
    EXPECT_EQ(widget("Text_a").mapTo(&window.widget(), QPoint()), before);
}

TEST_F(QtForm1Test, TheFrameOfStatisticsHidesWhatItHolds)
{
    form1.window.show();
    EXPECT_TRUE(widget("panel_total").isVisible());
    form1.frame_stats.set_visible(false);
    EXPECT_FALSE(widget("panel_total").isVisible());
}

TEST_F(QtForm1Test, TheHintTakesThePlaceOfTheStatisticsAndNothingMoves)
{
    form1.window.show();
    QCoreApplication::processEvents();
    EXPECT_FALSE(form1.panel_lista.visible());
    EXPECT_FALSE(widget("t_hint").isVisible());
    const auto place_of = [this](const char* name) {
        return QRect(widget(name).mapTo(&window.widget(), QPoint()), widget(name).size());
    };
    const QRect statistics = place_of("frame_stats");
    EXPECT_EQ(statistics.height(), widget("frame_stats").sizeHint().height());
    const QRect answer = place_of("Text_a");
    form1.frame_stats.set_visible(false);
    form1.panel_lista.set_visible(true);
    QCoreApplication::processEvents();
    EXPECT_TRUE(widget("t_hint").isVisible());
    EXPECT_EQ(place_of("panel_lista"), statistics);
    EXPECT_EQ(place_of("Text_a"), answer);
    EXPECT_GT(widget("t_hint").height(), statistics.height() - 10);
    EXPECT_GT(widget("t_hint").width(), statistics.width() - 10);
}

TEST_F(QtForm1Test, TheListTakesThePlaceOfTheHintAndGetsHalfOfTheHeight)
{
    const auto place_of = [this](const char* name) {
        return QRect(widget(name).mapTo(&window.widget(), QPoint()), widget(name).size());
    };
    form1.frame_stats.set_visible(false);
    form1.panel_lista.set_visible(true);
    form1.window.show();
    QCoreApplication::processEvents();
    EXPECT_FALSE(form1.listav.visible());
    EXPECT_FALSE(widget("listav").isVisible());
    const QRect hint = place_of("t_hint");
    const QRect answer = place_of("Text_a");
    form1.t_hint.set_visible(false);
    form1.listav.set_visible(true);
    form1.listav.set_lines(std::vector<std::string>(10'000, std::string(400, 'W')));
    QCoreApplication::processEvents();
    EXPECT_TRUE(widget("listav").isVisible());
    EXPECT_EQ(place_of("listav").bottom(), hint.bottom());
    EXPECT_EQ(place_of("listav").width(), hint.width());
    EXPECT_GT(place_of("listav").height(), hint.height());
    EXPECT_EQ(place_of("Text_a").top(), answer.top());
    EXPECT_NEAR(place_of("Text_a").height(), place_of("listav").height(), 40);
    // Only the card around the list is visible.
    EXPECT_TRUE(widget("listav").parentWidget()->isVisible());
    EXPECT_FALSE(widget("t_hint").parentWidget()->isVisible());
    form1.listav.set_visible(false);
    form1.t_hint.set_visible(true);
    QCoreApplication::processEvents();
    EXPECT_EQ(place_of("t_hint"), hint);
    EXPECT_EQ(place_of("Text_a"), answer);
    EXPECT_TRUE(widget("t_hint").isVisible());
    EXPECT_FALSE(widget("listav").parentWidget()->isVisible());
}

TEST_F(QtForm1Test, TheWholeToolbarStandsInOneRowOfAWindow800PixelsWide)
{
    const std::pair<const char*, common::Twips> captions[] = {{"Next &Question", 300},
                                                              {"Show &Answer", 300},
                                                              {"Show &Stats", 90},
                                                              {"Show &Hints", 195},
                                                              {"Let me &Type", 195},
                                                              {"+", 195},
                                                              {"-", 195},
                                                              {"&Edit", 90},
                                                              {"&Insert", 195},
                                                              {"&Save", 195},
                                                              {"&Delete", 210}};
    for (std::size_t i = 0; i < form1.pb.size(); ++i) {
        form1.pb[i]->set_caption(captions[i].first);
        form1.pb[i]->set_width(form1.pb[i]->width() + captions[i].second);
    }
    form1.window.show();
    window.widget().resize(800, 600);
    QCoreApplication::processEvents();
    int free_from = 0;
    for (std::size_t i = 0; i < form1.pb.size(); ++i) {
        const QWidget& button = widget(("pb_" + std::to_string(i + 1)).c_str());
        EXPECT_EQ(15 * button.width(), form1.pb[i]->width()) << captions[i].first;
        EXPECT_EQ(button.y(), widget("pb_1").y());
        EXPECT_GE(button.x(), free_from);
        free_from = button.geometry().right() + 1;
    }
    EXPECT_LE(free_from, 800);
    EXPECT_LT(widget("pb_1").mapTo(&window.widget(), QPoint(0, widget("pb_1").height())).y(),
              widget("lab_q").mapTo(&window.widget(), QPoint()).y());
}

TEST_F(QtForm1Test, TabGoesFromTheTopOfTheWindowToItsBottom)
{
    form1.frame_stats.set_visible(false);
    form1.panel_lista.set_visible(true);
    form1.listav.set_visible(true);
    form1.window.show();
    QCoreApplication::processEvents();
    widget("pb_1").setFocus();
    for (const char* next : {"pb_2", "pb_3", "pb_4", "pb_5", "pb_6", "pb_7", "pb_8", "pb_9", "pb_10", "pb_11", "Text_q",
                             "Text_a", "t_hint", "listav", "bot_yes", "bot_no", "bot_other"}) {
        press_key(*window.widget().focusWidget(), Qt::Key_Tab, "\t");
        EXPECT_EQ(window.widget().focusWidget()->objectName(), next);
    }
}

TEST_F(QtForm1Test, AToolbarButtonTellsItsClick)
{
    int clicks = 0;
    form1.pb[10]->on_click = [&] { ++clicks; };
    static_cast<QPushButton&>(widget("pb_11")).click();
    EXPECT_EQ(clicks, 1);
}

TEST_F(QtForm1Test, TheFocusHolderTakesTheFocusFromATextBox)
{
    form1.window.show();
    QCoreApplication::processEvents();
    widget("Text_a").setFocus();
    ASSERT_TRUE(widget("Text_a").hasFocus());
    form1.bot_focus.set_focus();
    EXPECT_FALSE(form1.Text_a.has_focus());
    EXPECT_TRUE(widget("bot_focus").hasFocus());
}

TEST_F(QtForm1Test, TabLeadsFromTheFocusHolderToWhatComesNext)
{
    form1.window.show();
    struct Next {
        bool hint;
        bool list;
        const char* name;
    };
    for (const Next next : {Next{false, false, "bot_yes"}, Next{true, false, "t_hint"}, Next{false, true, "listav"}}) {
        form1.frame_stats.set_visible(!next.hint && !next.list);
        form1.panel_lista.set_visible(next.hint || next.list);
        form1.t_hint.set_visible(next.hint);
        form1.listav.set_visible(next.list);
        form1.bot_focus.set_focus();
        press_key(widget("bot_focus"), Qt::Key_Tab, "\t");
        EXPECT_EQ(window.widget().focusWidget()->objectName(), next.name);
    }
}

TEST_F(QtForm1Test, KeysReachTheWindowBeforeTheTextBox)
{
    std::string seen;
    form1.window.on_key = [&](const KeyPress& press) {
        seen += press.character;
        return press.character == "+";
    };
    widget("Text_a").setFocus();
    press_key(widget("Text_a"), Qt::Key_X, "x");
    press_key(widget("Text_a"), Qt::Key_Plus, "+");
    EXPECT_EQ(seen, "x+");
    EXPECT_EQ(form1.Text_a.text(), "x");
}

TEST_F(QtForm1Test, AKeyThatTheWindowLeavesAloneIsSeenByTheBoxWithTheFocus)
{
    std::string seen;
    form1.window.on_key = [&](const KeyPress& press) { return press.character == "w"; };
    form1.Text_q.on_key = [&](const KeyPress& press) { return seen += "q" + press.character, true; };
    form1.Text_a.on_key = [&](const KeyPress& press) { return seen += "a" + press.character, true; };
    form1.t_hint.on_key = [&](const KeyPress& press) { return seen += "h" + press.character, true; };
    form1.panel_lista.set_visible(true);
    for (const char* name : {"Text_q", "Text_a", "t_hint"}) {
        widget(name).setFocus();
        press_key(widget(name), Qt::Key_W, "w");
        press_key(widget(name), Qt::Key_1, "1");
    }
    EXPECT_EQ(seen, "q1a1h1");
}

TEST_F(QtForm1Test, ASignalOfEndIsTheEndOfTheSessionAndNoWishToClose)
{
    std::string told;
    form1.window.on_close = [&] { told += "close "; };
    form1.window.on_session_end = [&] { told += "session "; };
    std::raise(SIGTERM);
    QCoreApplication::processEvents();
    EXPECT_EQ(told, "session ");
    EXPECT_TRUE(guard.ending());
}

TEST_F(QtForm1Test, SavesItsPictureOrSaysWhyNot)
{
    const QTemporaryDir folder;
    const std::string path = folder.filePath("window.png").toStdString();
    window.save_picture(path);
    EXPECT_EQ(QImage(QString::fromStdString(path)).size(), window.widget().size());
    EXPECT_THROW(window.save_picture(folder.filePath("missing/window.png").toStdString()), common::Error);
}

} // namespace

} // namespace cuedrill::platform::qt
