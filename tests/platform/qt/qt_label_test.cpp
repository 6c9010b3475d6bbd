#include "platform/qt/qt_label.h"
#include "platform/qt/qt_test_tools.h"

#include <QAccessible>

namespace cuedrill::platform::qt {

namespace {

class QtLabelTest : public QtTest {
protected:
    QtLabelTest() { label.widget().setParent(&window); }

    QAccessibleInterface& accessible() { return *QAccessible::queryAccessibleInterface(&label.widget()); }

    QWidget window;
    QtLabel label{"P_status", QtLabel::Kind::value, QtLabel::Announced::yes};
};

TEST_F(QtLabelTest, ShowsMarkupAndAmpersandsAsTheyAre)
{
    label.set_caption("<b>Tom</b> & Jerry");
    EXPECT_EQ(label.widget().textFormat(), Qt::PlainText);
    EXPECT_EQ(label.widget().text(), "<b>Tom</b> & Jerry");
    label.widget().resize(1000, 30);
    EXPECT_EQ(label.widget().shown_text(), "<b>Tom</b> & Jerry");
    EXPECT_EQ(label.caption(), "<b>Tom</b> & Jerry");
}

TEST_F(QtLabelTest, TellsItsCaptionAsNameAndWhatItIsAsDescription)
{
    label.set_caption("A & B <i>");
    label.set_description("Status");
    EXPECT_EQ(accessible().text(QAccessible::Name), "A & B <i>");
    EXPECT_EQ(accessible().text(QAccessible::Description), "Status");
    EXPECT_EQ(label.widget().objectName(), "P_status");
}

TEST_F(QtLabelTest, ShortensALongLineInsteadOfWideningTheWindow)
{
    label.set_caption(std::string(200, 'W'));
    label.widget().resize(120, 24);
    EXPECT_TRUE(label.widget().shown_text().endsWith(QChar(0x2026)));
    EXPECT_LT(label.widget().minimumSizeHint().width(), 120);
    EXPECT_LT(label.widget().sizeHint().width(), 600);
}

TEST_F(QtLabelTest, ShowsSeveralLinesAsOne)
{
    label.set_caption("one\r\ntwo");
    label.widget().resize(300, 24);
    EXPECT_EQ(label.widget().shown_text(), "one two");
    EXPECT_EQ(label.caption(), "one\r\ntwo");
}

TEST_F(QtLabelTest, ABackgroundComesWithBlackTextAndGoesWithoutTrace)
{
    const QPalette before = label.widget().palette();
    label.set_background(common::pure_red);
    EXPECT_EQ(label.widget().palette().color(QPalette::Window), QColor(255, 0, 0));
    EXPECT_EQ(label.widget().palette().color(QPalette::WindowText), QColor(Qt::black));
    label.set_background(std::nullopt);
    EXPECT_EQ(label.widget().palette().color(QPalette::Window), before.color(QPalette::Window));
    EXPECT_EQ(label.widget().palette().color(QPalette::WindowText), before.color(QPalette::WindowText));
}

TEST_F(QtLabelTest, TheBackgroundIsReallyPainted)
{
    label.set_caption("x");
    label.widget().resize(200, 30);
    label.set_background(common::pure_green);
    EXPECT_EQ(label.widget().grab().toImage().pixelColor(150, 15), QColor(0, 255, 0));
}

TEST_F(QtLabelTest, BoldAndEmphasisCanBeTakenBack)
{
    label.set_bold(true);
    label.set_alignment(Alignment::emphasised);
    EXPECT_TRUE(label.widget().font().bold());
    EXPECT_TRUE(label.widget().alignment().testFlag(Qt::AlignHCenter));
    label.set_bold(false);
    label.set_alignment(Alignment::left);
    EXPECT_FALSE(label.widget().font().bold());
    EXPECT_TRUE(label.widget().alignment().testFlag(Qt::AlignLeft));
}

TEST_F(QtLabelTest, RemembersWhatWasSetAlsoWhileItsWindowIsNotShown)
{
    EXPECT_TRUE(label.visible());
    EXPECT_TRUE(label.enabled());
    label.set_visible(false);
    label.set_enabled(false);
    EXPECT_FALSE(label.visible());
    EXPECT_FALSE(label.enabled());
    EXPECT_TRUE(label.widget().isHidden());
    EXPECT_FALSE(label.widget().isEnabled());
}

TEST_F(QtLabelTest, OnlyAnAnnouncedLabelIsANotification)
{
    QtLabel figure("panel_total", QtLabel::Kind::value);
    figure.widget().setParent(&window);
    figure.set_caption("12");
    EXPECT_EQ(accessible().role(), QAccessible::Notification);
    QAccessibleInterface& other = *QAccessible::queryAccessibleInterface(&figure.widget());
    EXPECT_EQ(other.role(), QAccessible::StaticText);
    EXPECT_EQ(other.text(QAccessible::Name), "12");
}

class QtLabelAnnouncementTest : public QtTest {
protected:
    QtLabelAnnouncementTest()
    {
        status.widget().setParent(&window);
        figure.widget().setParent(&window);
    }

    std::function<void(QLabel&)> tell = [this](QLabel& label) {
        told.push_back(QAccessible::queryAccessibleInterface(&label)->text(QAccessible::Name).toStdString());
    };

    QWidget window;
    QtLabel status{"P_status", QtLabel::Kind::value, QtLabel::Announced::yes, tell};
    QtLabel figure{"panel_total", QtLabel::Kind::value, QtLabel::Announced::no, tell};
    std::vector<std::string> told;
};

TEST_F(QtLabelAnnouncementTest, ANewCaptionIsTold)
{
    status.set_caption("Saved");
    status.set_caption("OK");
    EXPECT_EQ(told, (std::vector<std::string>{"Saved", "OK"}));
}

TEST_F(QtLabelAnnouncementTest, TheSameCaptionSetAgainIsToldAgain)
{
    status.set_caption("Saved");
    status.set_caption("Saved");
    EXPECT_EQ(told, (std::vector<std::string>{"Saved", "Saved"}));
    EXPECT_EQ(status.caption(), "Saved");
}

TEST_F(QtLabelAnnouncementTest, AnUntoldCaptionIsOnlyShown)
{
    status.set_untold_caption("OK");
    EXPECT_EQ(status.widget().text(), "OK");
    EXPECT_EQ(status.caption(), "OK");
    EXPECT_EQ(told, std::vector<std::string>());
    status.set_caption("OK");
    EXPECT_EQ(told, std::vector<std::string>{"OK"});
}

TEST_F(QtLabelAnnouncementTest, TheSameCaptionAfterAnEmptyOneIsToldAgainButNeverTheEmptyOne)
{
    status.set_caption("");
    status.set_caption("OK");
    status.set_caption("");
    status.set_caption("");
    status.set_caption("OK");
    EXPECT_EQ(told, (std::vector<std::string>{"OK", "OK"}));
}

TEST_F(QtLabelAnnouncementTest, AFigureIsNotTold)
{
    figure.set_caption("12");
    figure.set_caption("12");
    EXPECT_TRUE(told.empty());
}

} // namespace

} // namespace cuedrill::platform::qt
