// The boxes and dialogs lie on a small screen with all their buttons. The build runs this program with a screen of 1024
// x 600 pixels, for a resolution of the type and a scale of the screen that leave little of it.

#include "platform/qt/qt_desktop.h"
#include "platform/qt/qt_dialog_host.h"
#include "platform/qt/qt_window_state.h"
#include "program/program_fixture.h"

#include <QAbstractScrollArea>
#include <QAccessible>
#include <QHeaderView>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <QSizeGrip>
#include <QTableWidget>
#include <QTest>

namespace cuedrill::program {
namespace {

using platform::MessageBox;

class BoxSizesTest : public testing::Test {
protected:
    /// Calls `inspect` with the next dialog, and closes it.
    static void when_open(std::function<void(QDialog&)> inspect)
    {
        QTimer::singleShot(0, [inspect = std::move(inspect)] {
            auto* const dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            ASSERT_NE(dialog, nullptr) << "no dialog is open";
            for (int turn = 0; turn < 3; ++turn)
                QCoreApplication::processEvents();
            inspect(*dialog);
            dialog->reject();
        });
    }

    /// Shows the box and checks that it lies on the screen.
    void check_box(const MessageBox& box)
    {
        when_open([](QDialog& dialog) { check(dialog); });
        desktop.message_box(box);
    }

    platform::qt::QtGuard guard;
    platform::qt::QtDialogHost host;
    platform::qt::QtDesktop desktop{guard, host};

public:
    static void check(const QWidget& window)
    {
        const QRect screen = window.screen()->availableGeometry();
        ASSERT_LE(screen.width(), 410) << "the test wants a small screen";
        EXPECT_LE(window.width(), screen.width() - platform::qt::frame_room.width());
        EXPECT_LE(window.height(), screen.height() - platform::qt::frame_room.height());
        EXPECT_TRUE(screen.contains(window.geometry())) << window.x() << ", " << window.y();
        for (const QPushButton* button : window.findChildren<QPushButton*>()) {
            if (!button->isVisible())
                continue;
            const QSize caption = button->fontMetrics().size(Qt::TextShowMnemonic, button->text());
            EXPECT_GE(button->width(), caption.width()) << button->text().toStdString() << " is cut";
            EXPECT_GE(button->height(), caption.height()) << button->text().toStdString() << " is cut";
        }
        check_children(window, window);
    }

private:
    /// Each visible widget that is not scrolled lies in its window, and over no other.
    static void check_children(const QWidget& window, const QWidget& parent)
    {
        std::vector<const QWidget*> before;
        for (const QObject* child : parent.children()) {
            const auto* const widget = qobject_cast<const QWidget*>(child);
            if (widget == nullptr || !widget->isVisible() || widget->isWindow() || widget->size().isEmpty() ||
                qobject_cast<const QSizeGrip*>(widget) != nullptr)
                continue;
            const std::string name = widget->metaObject()->className() + (" " + widget->objectName()).toStdString();
            EXPECT_TRUE(window.rect().contains(QRect(widget->mapTo(&window, QPoint()), widget->size())))
                << name << " is not all in the window";
            for (const QWidget* other : before)
                EXPECT_FALSE(other->geometry().intersects(widget->geometry()))
                    << name << " and " << other->metaObject()->className();
            before.push_back(widget);
            if (qobject_cast<const QAbstractScrollArea*>(widget) == nullptr)
                check_children(window, *widget);
        }
    }
};

/// Two hundred characters: as long as a text of a record can be.
std::string longest_text(char letter)
{
    std::string text;
    while (text.size() < 200)
        text += std::string(9, letter) + ' ';
    return text;
}

const std::string wrong_answer =
    "You typed: \r\n\r\n   " + longest_text('t') + "\r\n\r\nThe correct answer is: \r\n\r\n   " + longest_text('c');

TEST_F(BoxSizesTest, a_box_with_long_answers)
{
    when_open([](QDialog& dialog) {
        check(dialog);
        auto& label = *dialog.findChild<QLabel*>(QStringLiteral("qt_msgbox_label"));
        EXPECT_EQ(QAccessible::queryAccessibleInterface(&label)->text(QAccessible::Name), label.text());
        EXPECT_EQ(label.text().toStdString().size(), wrong_answer.size() - 6) << "line ends are of one character";
        label.setFocus(Qt::TabFocusReason);
        QTest::keyClick(&label, Qt::Key_End, Qt::ControlModifier);
        EXPECT_GE(label.visibleRegion().boundingRect().bottom(), label.rect().bottom()) << "the end is in view";
        for (int line = 0; line < 40; ++line)
            QTest::keyClick(&label, Qt::Key_Up);
        EXPECT_LE(label.visibleRegion().boundingRect().top(), 0) << "the beginning is in view";
    });
    desktop.message_box({.text = wrong_answer, .title = "Wrong answer"});
}

TEST_F(BoxSizesTest, a_box_with_marked_answers)
{
    check_box(
        {.text = wrong_answer, .icon = platform::BoxIcon::information, .title = "Wrong answer", .marked = {{20, 8}}});
}

TEST_F(BoxSizesTest, a_box_with_a_word_wider_than_the_screen)
{
    check_box({.text = "The correct answer is: \r\n\r\n   " + std::string(60, 'W'), .title = "Wrong answer"});
}

TEST_F(BoxSizesTest, a_question)
{
    check_box({.text = "Reset all counters of all questions of this course?\r\n\r\n" + longest_text('q'),
               .buttons = platform::BoxButtons::yes_no,
               .icon = platform::BoxIcon::exclamation});
}

TEST_F(BoxSizesTest, a_box_with_details)
{
    std::string details;
    for (int line = 0; line < 30; ++line)
        details += "Line " + longest_text('d') + "\r\n";
    when_open([](QDialog& dialog) {
        check(dialog);
        const auto& text = *dialog.findChild<QPlainTextEdit*>();
        EXPECT_GE(text.viewport()->height(), 2 * text.fontMetrics().lineSpacing());
    });
    desktop.message_box({.text = "What the buttons and figures of the window are for:",
                         .icon = platform::BoxIcon::information,
                         .title = "Cuedrill - Help",
                         .details = details});
    check_box({.text = wrong_answer, .details = details});
}

TEST_F(BoxSizesTest, an_input_box)
{
    when_open([](QDialog& dialog) { check(dialog); });
    desktop.input_box({.prompt = "New target level (1 to 10)?", .title = "Changing target level", .default_text = "5"});
}

TEST_F(BoxSizesTest, the_choice_of_columns)
{
    when_open([](QDialog& dialog) {
        check(dialog);
        const auto& table = *dialog.findChild<QTableWidget*>();
        const QWidget& heading = *table.horizontalHeader();
        EXPECT_GE(heading.height(), heading.fontMetrics().height()) << "what is chosen can be read";
        EXPECT_GT(table.viewport()->height(), 0);
    });
    desktop.columns_box({.title = "Importing",
                         .prompt = "The records have more than two texts. Which of them are the question and the "
                                   "answer?",
                         .first_label = "Question",
                         .second_label = "Answer",
                         .names = {"Number", "Word", "Translation"},
                         .rows = {{"1", longest_text('w'), "uno"}, {"2", "two", longest_text('t')}}});
}

TEST_F(BoxSizesTest, the_file_dialogs)
{
    const auto check_dialog = [](QDialog& dialog) {
        check(dialog);
        const auto* const line = dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
        EXPECT_TRUE(line->isVisible());
        EXPECT_GE(line->height(), line->fontMetrics().height());
        const auto* const files = dialog.findChild<QAbstractScrollArea*>(QStringLiteral("treeView"));
        EXPECT_TRUE(files->isVisible());
        EXPECT_GE(files->viewport()->height(), 2 * files->fontMetrics().lineSpacing());
    };
    const platform::FileDialog wish{.title = "Select the course", .filter = "Courses (*.crs)|*.crs|All files|*.*"};
    when_open(check_dialog);
    desktop.open_file_dialog(wish);
    when_open(check_dialog);
    desktop.save_file_dialog(wish);
}

class FurtherWindowSizes : public ProgramTest {};

TEST_F(FurtherWindowSizes, the_box_about_the_program_and_the_windows_of_long_texts)
{
    fakes::CourseBuilder builder;
    builder.question("What is the capital of Italy?", "Rome");
    run(builder.write(folder, "course.crs"), [](Program& program) {
        bool checked = false;
        // A posted event comes before the timer with which the fixture closes boxes.
        std::function<void()> look = [&] {
            if (const QWidget* const box = QApplication::activeModalWidget()) {
                BoxSizesTest::check(*box);
                checked = true;
            } else {
                QMetaObject::invokeMethod(qApp, look, Qt::QueuedConnection);
            }
        };
        QMetaObject::invokeMethod(qApp, look, Qt::QueuedConnection);
        choose(program, "m_about");
        EXPECT_TRUE(checked);
        checked = false;
        choose(program, "m_version_history");
        for (const QWidget* window : QApplication::topLevelWidgets()) {
            if (window->isVisible() && window->objectName() == QLatin1String("f_msgbox")) {
                BoxSizesTest::check(*window);
                checked = true;
            }
        }
        EXPECT_TRUE(checked);
    });
}

} // namespace
} // namespace cuedrill::program
