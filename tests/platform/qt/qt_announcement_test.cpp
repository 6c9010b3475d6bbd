#include "platform/qt/qt_announcement.h"
#include "platform/qt/qt_test_tools.h"

#include <QAccessible>
#include <QDeadlineTimer>
#include <QDialog>
#include <QLabel>
#include <QTimer>
#include <chrono>

namespace cuedrill::platform::qt {

namespace {

class QtAnnouncerTest : public QtTest {
protected:
    static std::string name(QLabel& label)
    {
        return QAccessible::queryAccessibleInterface(&label)->text(QAccessible::Name).toStdString();
    }

    QWidget window;
    std::vector<std::string> told;
    QtAnnouncer announcer{window, [this](QLabel& label) { told.push_back(name(label)); }};
};

TEST_F(QtAnnouncerTest, TellsATextEachTimeAlsoTheSameOne)
{
    for (const char* const text : {"Not known. Level 0.", "Not known. Level 0.", "a & <b>"})
        announcer.tell_now(text);
    EXPECT_EQ(told, (std::vector<std::string>{"Not known. Level 0.", "Not known. Level 0.", "a & <b>"}));
}

TEST_F(QtAnnouncerTest, TellsTheTextsOfOneMomentAsOne)
{
    for (const char* const text : {"Right.", "score of 3 (0.40 days)", "", "two?\r\n", "Do you know?"})
        announcer.tell(text);
    EXPECT_TRUE(told.empty());
    QDeadlineTimer deadline(std::chrono::seconds(30));
    while (told.empty() && !deadline.hasExpired())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 100);
    EXPECT_EQ(told, std::vector<std::string>{"Right. score of 3 (0.40 days). two? Do you know?"});
}

TEST_F(QtAnnouncerTest, TellsWhatWaitsBeforeATextThatCannotWait)
{
    announcer.tell("The hint is closed.");
    announcer.tell_now("Oslo");
    EXPECT_EQ(told, std::vector<std::string>{"The hint is closed. Oslo"});
    announcer.tell_now("");
    EXPECT_EQ(told.size(), 1U);
}

TEST_F(QtAnnouncerTest, TellsWhatWaitsBeforeABoxIsShown)
{
    window.show();
    announcer.tell("Saved.");
    QDialog box(&window);
    QTimer::singleShot(0, &box, [&] {
        EXPECT_EQ(told, std::vector<std::string>{"Saved."});
        box.reject();
    });
    box.exec();
}

TEST_F(QtAnnouncerTest, TheLastTextIsToldBeforeTheProgramGoesOn)
{
    announcer.tell_last("Cuedrill ends.");
    EXPECT_EQ(told, std::vector<std::string>{"Cuedrill ends."});
}

TEST_F(QtAnnouncerTest, ATextStaysToBeReadWhileTheNextOneIsTold)
{
    std::vector<QLabel*> labels;
    QtAnnouncer other(window, [&](QLabel& label) { labels.push_back(&label); });
    for (const char* const text : {"one?", "Right.", "two?"}) {
        other.tell_now(text);
        EXPECT_EQ(name(*labels.back()), text);
        if (labels.size() > 1) {
            EXPECT_NE(labels.back(), labels[labels.size() - 2]);
        }
    }
    EXPECT_EQ(name(*labels[1]), "Right.");
}

TEST_F(QtAnnouncerTest, ATextIsANotificationInAStatusBarWithoutAnyOtherWord)
{
    announcer.tell_now("France?");
    QAccessibleInterface& news = *QAccessible::queryAccessibleInterface(window.findChild<QLabel*>("announcement"));
    EXPECT_EQ(news.role(), QAccessible::Notification);
    EXPECT_EQ(news.text(QAccessible::Name), "France?");
    EXPECT_EQ(news.text(QAccessible::Description), "");
    ASSERT_NE(news.parent(), nullptr);
    EXPECT_EQ(news.parent()->role(), QAccessible::StatusBar);
}

TEST_F(QtAnnouncerTest, TellsNoEmptyText)
{
    announcer.tell_now("");
    announcer.tell_now(" \r\n");
    EXPECT_TRUE(told.empty());
    EXPECT_EQ(name(*window.findChild<QLabel*>("announcement")), "");
}

} // namespace

} // namespace cuedrill::platform::qt
