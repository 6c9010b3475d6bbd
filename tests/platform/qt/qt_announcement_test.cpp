#include "platform/qt/qt_announcement.h"
#include "platform/qt/qt_test_tools.h"

#include <QAccessible>
#include <QLabel>

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
    announcer.tell("Not known. Level 0.");
    announcer.tell("Not known. Level 0.");
    announcer.tell("a & <b>");
    EXPECT_EQ(told, (std::vector<std::string>{"Not known. Level 0.", "Not known. Level 0.", "a & <b>"}));
}

TEST_F(QtAnnouncerTest, ATextStaysToBeReadWhileTheNextOneIsTold)
{
    std::vector<QLabel*> labels;
    QtAnnouncer other(window, [&](QLabel& label) { labels.push_back(&label); });
    for (const char* const text : {"one?", "Right.", "two?"}) {
        other.tell(text);
        EXPECT_EQ(name(*labels.back()), text);
        if (labels.size() > 1) {
            EXPECT_NE(labels.back(), labels[labels.size() - 2]);
        }
    }
    EXPECT_EQ(name(*labels[1]), "Right.");
}

TEST_F(QtAnnouncerTest, TellsNoEmptyText)
{
    announcer.tell("");
    EXPECT_TRUE(told.empty());
    EXPECT_EQ(name(*window.findChild<QLabel*>("announcement")), "No announcement");
}

} // namespace

} // namespace cuedrill::platform::qt
