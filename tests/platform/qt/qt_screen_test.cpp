#include "platform/qt/qt_look.h"
#include "platform/qt/qt_screen.h"
#include "platform/qt/qt_test_tools.h"

#include <QAccessible>
#include <string>
#include <vector>

namespace cuedrill::platform::qt {

namespace {

class QtScreenTest : public QtTest {
protected:
    void show() { view.show(screen); }

    /// Shows the line as P_status. If its `news` has changed, it is announced.
    void show_status(const Line& line)
    {
        screen.P_status = line;
        show();
    }
    void tell_status(const std::string& text)
    {
        screen.P_status.text = text;
        ++screen.P_status.news;
        show();
    }

    QAccessibleInterface& accessible(QWidget& widget) { return *QAccessible::queryAccessibleInterface(&widget); }

    QWidget window;
    std::vector<std::string> told;
    QtScreen view{window, [this](const QString& text) { told.push_back(text.toStdString()); }};
    CaptionLabel& status = view.label(&Screen::P_status);
    Screen screen;
};

TEST_F(QtScreenTest, ShowsMarkupAndAmpersandsAsTheyAre)
{
    show_status({.text = "<b>Tom</b> & Jerry"});
    EXPECT_EQ(status.textFormat(), Qt::PlainText);
    EXPECT_EQ(status.text(), "<b>Tom</b> & Jerry");
    status.resize(1000, 30);
    EXPECT_EQ(status.shown_text(), "<b>Tom</b> & Jerry");
}

TEST_F(QtScreenTest, TellsATextAsNameAndWhatItIsAsDescription)
{
    show_status({.text = "A & B <i>", .description = "Status"});
    EXPECT_EQ(accessible(status).text(QAccessible::Name), "A & B <i>");
    EXPECT_EQ(accessible(status).text(QAccessible::Description), "Status");
    EXPECT_EQ(status.objectName(), "P_status");
}

TEST_F(QtScreenTest, ShortensALongLineInsteadOfWideningTheWindow)
{
    show_status({.text = std::string(200, 'W')});
    status.resize(120, 24);
    EXPECT_TRUE(status.shown_text().endsWith(QChar(0x2026)));
    EXPECT_LT(status.minimumSizeHint().width(), 120);
    EXPECT_LT(status.sizeHint().width(), 600);
}

TEST_F(QtScreenTest, ShowsSeveralLinesAsOne)
{
    show_status({.text = "one\r\ntwo"});
    status.resize(300, 24);
    EXPECT_EQ(status.shown_text(), "one two");
}

TEST_F(QtScreenTest, ABackgroundComesWithBlackTextAndGoesWithoutTrace)
{
    const QPalette before = status.palette();
    show_status({.background = common::pure_red});
    EXPECT_EQ(status.palette().color(QPalette::Window), QColor(255, 0, 0));
    EXPECT_EQ(status.palette().color(QPalette::WindowText), QColor(Qt::black));
    show_status({});
    EXPECT_EQ(status.palette().color(QPalette::Window), before.color(QPalette::Window));
    EXPECT_EQ(status.palette().color(QPalette::WindowText), before.color(QPalette::WindowText));
}

TEST_F(QtScreenTest, TheBackgroundIsReallyPainted)
{
    status.resize(200, 30);
    show_status({.text = "x", .background = common::pure_green});
    EXPECT_EQ(status.grab().toImage().pixelColor(150, 15), QColor(0, 255, 0));
}

TEST_F(QtScreenTest, BoldAndEmphasisCanBeTakenBack)
{
    show_status({.bold = true, .alignment = Alignment::emphasised});
    EXPECT_TRUE(status.font().bold());
    EXPECT_TRUE(status.alignment().testFlag(Qt::AlignHCenter));
    show_status({});
    EXPECT_FALSE(status.font().bold());
    EXPECT_TRUE(status.alignment().testFlag(Qt::AlignLeft));
}

TEST_F(QtScreenTest, ALineCanBeHiddenAndDisabled)
{
    show_status({.visible = false, .enabled = false});
    EXPECT_TRUE(status.isHidden());
    EXPECT_FALSE(status.isEnabled());
    show_status({});
    EXPECT_FALSE(status.isHidden());
    EXPECT_TRUE(status.isEnabled());
}

TEST_F(QtScreenTest, DrawsOnlyWhatDiffers)
{
    show_status({.text = "Saved."});
    status.setText(QStringLiteral("by somebody else"));
    screen.panel_total.text = "12";
    show();
    EXPECT_EQ(status.text(), "by somebody else");
    EXPECT_EQ(view.label(&Screen::panel_total).text(), "12");
}

TEST_F(QtScreenTest, OnlyThePromptAndTheStatusAreTold)
{
    for (const NamedLine& named : screen_lines) {
        (screen.*named.line).text = "12";
        ++(screen.*named.line).news;
    }
    show();
    for (const ScreenLine line : {&Screen::P_status, &Screen::panel_dialog, &Screen::panel_total}) {
        QAccessibleInterface& shown = accessible(view.label(line));
        EXPECT_EQ(shown.role(), QAccessible::StaticText);
        EXPECT_EQ(shown.text(QAccessible::Name), "12");
    }
    EXPECT_EQ(told, (std::vector<std::string>{"12", "12"}));
}

TEST_F(QtScreenTest, NewsAreToldAlsoWhereTheTextIsTheSame)
{
    tell_status("Saved");
    tell_status("OK");
    tell_status("OK");
    EXPECT_EQ(told, (std::vector<std::string>{"Saved", "OK", "OK"}));
}

TEST_F(QtScreenTest, ATextThatIsNoNewsIsOnlyShown)
{
    show_status({.text = "OK"});
    EXPECT_EQ(status.text(), "OK");
    EXPECT_TRUE(told.empty());
    tell_status("OK");
    EXPECT_EQ(told, std::vector<std::string>{"OK"});
}

TEST_F(QtScreenTest, AnEmptyTextIsNeverTold)
{
    for (const char* text : {"", "OK", "", "", "OK"})
        tell_status(text);
    EXPECT_EQ(told, (std::vector<std::string>{"OK", "OK"}));
}

class QtLevelRowTest : public QtScreenTest {
protected:
    QtLevelRowTest() { row.resize(400, 24); }

    void show_level(const LevelLine& line)
    {
        screen.panel_level[2] = line;
        show();
    }

    /// The colour in the vertical middle of the row, from left (0) to right (1).
    QColor colour_at(double place)
    {
        const QImage picture = row.grab().toImage();
        return picture.pixelColor(static_cast<int>(place * (picture.width() - 1)), picture.height() / 2);
    }

    LevelRow& row = view.level_row(2);
};

TEST_F(QtLevelRowTest, TellsItsCountAsNameAndItsLevelAsDescription)
{
    show_level({.caption = "Level 2", .description = "Level 2", .count = 14, .total = 20});
    EXPECT_EQ(accessible(row).text(QAccessible::Name), "14");
    EXPECT_EQ(accessible(row).text(QAccessible::Description), "Level 2");
    EXPECT_EQ(row.caption(), "Level 2");
    EXPECT_EQ(row.objectName(), "panel_level_2");
}

TEST_F(QtLevelRowTest, FillsTheBarByTheShare)
{
    const QColor filled = bar_fill(row.palette());
    show_level({.count = 10, .total = 20});
    EXPECT_DOUBLE_EQ(row.share(), 0.5);
    EXPECT_EQ(colour_at(0.4), filled);
    EXPECT_NE(colour_at(0.7), filled);
}

TEST_F(QtLevelRowTest, TheBarOfAnEmptyCourseIsEmpty)
{
    show_level({.caption = "Level 2"});
    EXPECT_DOUBLE_EQ(row.share(), 0.0);
    EXPECT_EQ(row.text(), "0");
}

TEST_F(QtLevelRowTest, AShareNeverLeavesTheBar)
{
    show_level({.count = 30, .total = 20});
    EXPECT_DOUBLE_EQ(row.share(), 1.0);
    EXPECT_EQ(row.text(), "30");
}

TEST_F(QtLevelRowTest, ABackgroundComesWithBlackTextAndGoesWithoutTrace)
{
    show_level({.caption = "Level 2"});
    const QColor before = colour_at(0.01);
    show_level({.caption = "Level 2", .background = common::light_cyan});
    EXPECT_EQ(colour_at(0.01), QColor(192, 255, 255));
    EXPECT_EQ(row.palette().color(QPalette::WindowText), QColor(Qt::black));
    show_level({.caption = "Level 2"});
    EXPECT_EQ(colour_at(0.01), before);
}

TEST_F(QtLevelRowTest, AMarkChangesThePictureAndNotOnlyItsColour)
{
    show_level({.count = 1, .total = 2});
    const QImage plain = row.grab().toImage();
    show_level({.count = 1, .total = 2, .marked = true});
    EXPECT_TRUE(row.marked());
    EXPECT_NE(row.grab().toImage(), plain);
    show_level({.count = 1, .total = 2});
    EXPECT_EQ(row.grab().toImage(), plain);
}

class QtDueChartTest : public QtScreenTest {
protected:
    QtDueChartTest()
    {
        screen.due_picture.words = "2 questions are due now";
        screen.due_picture.description = "What is due";
        for (DueBar& bar : screen.due_picture.bars)
            bar.caption = "Today";
        show();
    }

    QImage picture_at(int width)
    {
        chart.resize(width, 140);
        return chart.grab().toImage();
    }

    std::vector<std::size_t> drawn_bars()
    {
        std::vector<std::size_t> bars;
        for (const DueChart::Column& column : chart.columns())
            bars.push_back(column.bar);
        return bars;
    }

    DueChart& chart = view.due_chart();
};

TEST_F(QtDueChartTest, SaysItsPictureInWordsAsNameAndToolTip)
{
    EXPECT_EQ(accessible(chart).text(QAccessible::Name), "2 questions are due now");
    EXPECT_EQ(accessible(chart).text(QAccessible::Description), "What is due");
    EXPECT_EQ(chart.toolTip(), "2 questions are due now");
    EXPECT_EQ(chart.objectName(), "due_picture");
}

TEST_F(QtDueChartTest, FillsTheBarsFromBelowByTheirShare)
{
    screen.due_picture.bars.front() = {.caption = "Now", .figure = "1", .count = 1, .whole = 2};
    show();
    const QImage picture = picture_at(600);
    const int middle = 600 / due_bars / 2;
    const QColor filled = picture.pixelColor(middle, 100);
    EXPECT_NE(picture.pixelColor(middle, 50), filled);
    EXPECT_EQ(picture.pixelColor(middle, 80), filled);
    screen.due_picture.bars.front().count = 2;
    show();
    EXPECT_EQ(picture_at(600).pixelColor(middle, 50), filled);
}

TEST_F(QtDueChartTest, LeavesOutTheLastDaysWhereThereIsNoRoom)
{
    using Bars = std::vector<std::size_t>;
    chart.resize(600, 140);
    EXPECT_EQ(drawn_bars(), (Bars{0, 1, 2, 3, 4, 5, 6, 7, 8}));
    chart.resize(chart.sizeHint().width(), 140);
    EXPECT_EQ(drawn_bars(), (Bars{0, 1, 2, 3, 4, 5, 6, 7, 8}));
    chart.resize(chart.sizeHint().width() - 1, 140);
    EXPECT_EQ(drawn_bars(), (Bars{0, 1, 2, 3, 4, 5, 6, 8}));
    chart.resize(chart.minimumSizeHint().width(), 140);
    EXPECT_EQ(drawn_bars(), (Bars{0, 1, 8}));
}

TEST_F(QtDueChartTest, HasRoomForEachCaptionAtItsSmallest)
{
    chart.resize(chart.minimumSizeHint());
    int right = 0;
    for (const DueChart::Column& column : chart.columns()) {
        EXPECT_GE(column.place.left(), right);
        EXPECT_GT(column.place.width(), chart.fontMetrics().horizontalAdvance("Today"));
        right = column.place.right() + 1;
    }
    EXPECT_LE(right, chart.width());
}

TEST_F(QtDueChartTest, KeepsItsSizeWhateverTheFiguresAre)
{
    const QSize hint = chart.sizeHint();
    const QSize least = chart.minimumSizeHint();
    for (DueBar& bar : screen.due_picture.bars)
        bar = {.caption = "Today", .figure = "32767", .count = 32767, .whole = 32767};
    show();
    EXPECT_EQ(chart.sizeHint(), hint);
    EXPECT_EQ(chart.minimumSizeHint(), least);
}

} // namespace

} // namespace cuedrill::platform::qt
