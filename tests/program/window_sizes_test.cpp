// Nothing is cut and nothing overlaps in the window on small screens and with large type. The build runs this program
// once for each resolution of the type and each scale of the screen, which the toolkit reads at its start.

#include "platform/qt/qt_caption_label.h"
#include "platform/qt/qt_due_chart.h"
#include "platform/qt/qt_window_state.h"
#include "program/program_fixture.h"

#include <QAbstractScrollArea>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>

namespace cuedrill::program {
namespace {

/// Sizes of screens in their own pixels.
const QSize screens[] = {{1024, 600}, {1280, 900}, {1920, 1080}};

std::string named(const QWidget& widget)
{
    const QString name = widget.objectName();
    return (name.isEmpty() ? QString::fromLatin1(widget.metaObject()->className()) : name).toStdString();
}

/// Without any room left, in pixels of the toolkit: 1024 x 600 at three times the size.
constexpr QSize smallest_screen(341, 200);

/// Size of a window that fills the screen, in pixels of the toolkit.
QSize logical(QSize screen)
{
    return QSizeF(screen / qApp->devicePixelRatio()).toSize();
}

class WindowSizesTest : public ProgramTest {
protected:
    QSize smallest = smallest_screen;
    int usable_lines = 2; ///< lines of question and answer that can be seen at least
    int usable_width = 8; ///< characters that a line of them holds at least

    /// Checks the window at the size of each screen, both brought into a state at this size and made this size in the
    /// state.
    void check_everywhere(const std::function<void(Program&)>& bring)
    {
        for (const QSize screen : screens) {
            if (logical(screen) != logical(screen).expandedTo(smallest))
                continue;
            SCOPED_TRACE(std::to_string(screen.width()) + " x " + std::to_string(screen.height()));
            const auto fill_screen = [&](Program& program) {
                program.form1().widget().resize(logical(screen));
                settle();
            };
            run(course(), [&](Program& program) {
                fill_screen(program);
                bring(program);
                settle();
                check(program.form1().widget(), logical(screen));
            });
            run(course(), [&](Program& program) {
                bring(program);
                fill_screen(program);
                check(program.form1().widget(), logical(screen));
            });
        }
    }

    std::string course()
    {
        fakes::CourseBuilder builder;
        builder.question("What is the capital of Norway?", "Oslo on the fjord of that name");
        builder.question("What is the capital of Italy?", "Rome").level(3);
        return builder.write(folder, "course" + std::to_string(++courses_) + ".crs");
    }

    int courses_ = 0; ///< written so far

    /// Waits until all layouts have passed their requests on.
    static void settle()
    {
        for (int turn = 0; turn < 3; ++turn)
            QCoreApplication::processEvents();
    }

    /// Clicks a button, which may be in the menu of the toolbar.
    static void click(Program& program, const char* name)
    {
        program.form1().widget().findChild<QAbstractButton*>(QString::fromLatin1(name))->click();
        QCoreApplication::processEvents();
    }

    /// Zooms in by so many steps from 100 %. The zoom of the run before is kept.
    static void enlarge(Program& program, int steps)
    {
        QTest::keyClick(&program.form1().widget(), Qt::Key_0, Qt::ControlModifier);
        for (int step = 0; step < steps; ++step)
            QTest::keyClick(&program.form1().widget(), Qt::Key_Plus, Qt::ControlModifier);
    }

    void check(QWidget& window, QSize size) const
    {
        EXPECT_EQ(window.size(), size) << "the window is larger than the screen";
        for (QWidget* widget : window.findChildren<QWidget*>()) {
            if (!widget->isVisible() || widget->size().isEmpty())
                continue;
            EXPECT_TRUE(window.rect().contains(QRect(widget->mapTo(&window, QPoint()), widget->size())))
                << named(*widget) << " is not all in the window";
            check_caption(*widget);
            check_children(*widget);
        }
        check_children(window);
        for (const char* name : {"Text_q", "Text_a"}) {
            auto& text = *window.findChild<QPlainTextEdit*>(QString::fromLatin1(name));
            EXPECT_TRUE(text.isVisible()) << name;
            const QFontMetrics type = text.fontMetrics();
            EXPECT_GE(text.viewport()->height(), usable_lines * type.lineSpacing()) << name;
            EXPECT_GE(text.width(), usable_width * type.averageCharWidth()) << name;
        }
        check_due_picture(window);
        check_toolbar_groups(window);
        check_dialog_and_status(window);
    }

    static void check_dialog_and_status(const QWidget& window)
    {
        for (const char* name : {"panel_dialog", "dialog_strip", "bot_yes", "bot_no", "P_status"}) {
            const QWidget& part = *window.findChild<QWidget*>(QString::fromLatin1(name));
            EXPECT_TRUE(part.isVisible()) << name;
            EXPECT_GE(part.height(), part.fontMetrics().height()) << name;
        }
    }

    static void check_caption(const QWidget& widget)
    {
        if (const auto* label = dynamic_cast<const platform::qt::CaptionLabel*>(&widget)) {
            EXPECT_EQ(label->shown_text().toStdString(), label->text().toStdString()) << named(widget) << " is cut";
            EXPECT_GE(widget.height(), widget.fontMetrics().height()) << named(widget);
        }
        if (const auto* button = qobject_cast<const QPushButton*>(&widget)) {
            const QSize caption = button->fontMetrics().size(Qt::TextShowMnemonic, button->text());
            EXPECT_GE(button->width(), caption.width()) << named(widget) << " is cut";
            EXPECT_GE(button->height(), caption.height()) << named(widget) << " is cut";
        }
    }

    static void check_due_picture(const QWidget& window)
    {
        const auto& picture = dynamic_cast<platform::qt::DueChart&>(*window.findChild<QLabel*>("due_picture"));
        if (!picture.isVisible())
            return;
        EXPECT_GE(picture.width(), picture.minimumSizeHint().width()) << "the picture of what is due is cut";
        EXPECT_GE(picture.height(), picture.minimumSizeHint().height()) << "the picture of what is due is cut";
        int right = 0;
        for (const platform::qt::DueChart::Column& column : picture.columns()) {
            EXPECT_GE(column.place.left(), right);
            right = column.place.right() + 1;
            const QString figure = QString::fromStdString(picture.bar(column.bar).figure);
            const QFontMetrics type(picture.figure_font(figure, column.place.width()));
            EXPECT_LE(type.horizontalAdvance(figure), column.place.width()) << figure.toStdString() << " is cut";
        }
        EXPECT_LE(right, picture.width());
    }

    /// Buttons of different groups are further apart than those of one group.
    static void check_toolbar_groups(const QWidget& window)
    {
        const auto place = [&](int number) {
            const auto* const button = window.findChild<QPushButton*>(QStringLiteral("pb_%1").arg(number));
            return button->isVisible() ? button->geometry() : QRect();
        };
        for (int number = 2; number <= platform::toolbar_buttons; ++number) {
            const QRect left = place(number - 1);
            const QRect right = place(number);
            if (left.isNull() || right.isNull() || left.top() != right.top())
                continue;
            const int space = right.left() - left.right() - 1;
            if (number == 6 || number == 8)
                EXPECT_GE(space, 5) << "groups before button " << number;
            else
                EXPECT_LE(space, 2) << "before button " << number;
        }
    }

    static void check_children(const QWidget& parent)
    {
        // The toolkit places what is inside these.
        if (qobject_cast<const QAbstractScrollArea*>(&parent) != nullptr)
            return;
        std::vector<const QWidget*> before;
        for (const QObject* child : parent.children()) {
            const auto* const widget = qobject_cast<const QWidget*>(child);
            if (widget == nullptr || !widget->isVisible() || widget->isWindow() || widget->size().isEmpty())
                continue;
            EXPECT_TRUE(parent.rect().contains(widget->geometry()))
                << named(*widget) << " in " << named(parent) << ": " << widget->y() << "+" << widget->height() << " in "
                << parent.height();
            for (const QWidget* other : before)
                EXPECT_FALSE(other->geometry().intersects(widget->geometry()))
                    << named(*other) << " and " << named(*widget);
            before.push_back(widget);
        }
    }
};

TEST_F(WindowSizesTest, at_the_start)
{
    check_everywhere([](Program&) {});
}

TEST_F(WindowSizesTest, with_a_question)
{
    check_everywhere([](Program& program) { click(program, "bot_yes"); });
}

TEST_F(WindowSizesTest, with_an_answer)
{
    check_everywhere([](Program& program) {
        click(program, "bot_yes");
        click(program, "bot_yes");
        EXPECT_EQ(label(program, "panel_dialog"), "Did you know the answer?");
    });
}

TEST_F(WindowSizesTest, with_a_word_hint)
{
    check_everywhere([](Program& program) {
        click(program, "bot_yes");
        click(program, "pb_4");
        EXPECT_TRUE(program.form1().controls().t_hint.visible());
    });
}

TEST_F(WindowSizesTest, with_a_list)
{
    check_everywhere([](Program& program) {
        choose(program, "m_show_sort_by_score");
        EXPECT_TRUE(program.form1().controls().listav.visible());
    });
}

TEST_F(WindowSizesTest, with_a_record_that_is_edited)
{
    check_everywhere([](Program& program) {
        click(program, "bot_yes");
        click(program, "pb_8");
    });
}

TEST_F(WindowSizesTest, with_a_request_in_the_status_line)
{
    check_everywhere([](Program& program) {
        click(program, "bot_yes");
        click(program, "pb_2");
        EXPECT_EQ(label(program, "P_status"), "Press '+' or '-' to indicate success or failure");
    });
}

TEST_F(WindowSizesTest, with_type_of_twice_the_size)
{
    usable_lines = 1;
    check_everywhere([](Program& program) {
        click(program, "bot_yes");
        enlarge(program, 6);
    });
}

TEST_F(WindowSizesTest, with_a_word_hint_of_the_largest_type)
{
    usable_lines = 0;
    usable_width = 5;
    check_everywhere([](Program& program) {
        click(program, "bot_yes");
        enlarge(program, 10);
        click(program, "pb_4");
        EXPECT_TRUE(program.form1().controls().t_hint.visible());
    });
}

TEST_F(WindowSizesTest, with_a_list_of_the_largest_type)
{
    usable_lines = 0;
    usable_width = 5;
    check_everywhere([](Program& program) {
        enlarge(program, 10);
        choose(program, "m_show_sort_by_score");
        EXPECT_TRUE(program.form1().controls().listav.visible());
    });
}

/// A window manager may take as much of the smallest screen as frame_room says. The status line may then be shortened.
TEST_F(WindowSizesTest, in_a_frame_on_the_smallest_screen)
{
    for (const char* const entry : {"m_view_hints", "m_show_sort_by_score"}) {
        SCOPED_TRACE(entry);
        run(course(), [&](Program& program) {
            QWidget& window = program.form1().widget();
            window.resize(smallest_screen - platform::qt::frame_room);
            for (int step = 0; step < 3; ++step)
                click(program, "bot_yes");
            EXPECT_EQ(label(program, "P_status").substr(0, 26), "score of previous question");
            choose(program, entry);
            settle();
            for (const QWidget* widget : window.findChildren<QWidget*>())
                check_children(*widget);
            check_dialog_and_status(window);
        });
    }
}

/// Figures of millions, as no course has them.
TEST_F(WindowSizesTest, with_large_figures_of_what_is_due)
{
    check_everywhere([](Program& program) {
        auto& picture = dynamic_cast<platform::qt::DueChart&>(
            *program.form1().widget().findChild<QLabel*>(QStringLiteral("due_picture")));
        platform::DuePicture large;
        for (platform::DueBar& bar : large.bars)
            bar = {.caption = "Now", .figure = "8888888"};
        picture.show_picture(large);
    });
}

/// A desktop can have large type without a larger scale.
TEST_F(WindowSizesTest, with_a_font_of_the_desktop_twice_as_large)
{
    const QFont usual = QApplication::font();
    QFont large = usual;
    large.setPointSizeF(usual.pointSizeF() * 2);
    QApplication::setFont(large);
    smallest *= 2;
    check_everywhere([](Program& program) {
        click(program, "bot_yes");
        click(program, "bot_yes");
    });
    QApplication::setFont(usual);
}

TEST_F(WindowSizesTest, with_the_buttons_of_the_dialog_from_the_start)
{
    run(course(), [&](Program& program) {
        QWidget& window = program.form1().widget();
        for (int width = 340; width <= 700; width += 20) {
            window.resize(width, 330);
            settle();
            const QWidget& strip = *window.findChild<QWidget*>(QStringLiteral("dialog_strip"));
            for (const char* name : {"bot_yes", "bot_no"}) {
                const auto& button = *window.findChild<QPushButton*>(QLatin1String(name));
                const int caption = button.fontMetrics().horizontalAdvance(button.text());
                EXPECT_TRUE(strip.rect().contains(button.geometry())) << name << " at " << width;
                EXPECT_GE(button.width(), caption) << name << " at " << width;
                EXPECT_GE(button.width(), button.height()) << name << " at " << width;
            }
        }
    });
}

} // namespace
} // namespace cuedrill::program
