// In each theme, what has the keyboard focus has a ring that differs from all around it, and the texts of a list can be
// read on each ground.
#include "platform/qt/qt_answered_box.h"
#include "platform/qt/qt_card.h"
#include "platform/qt/qt_contrast.h"
#include "platform/qt/qt_line_view.h"
#include "platform/qt/qt_look.h"
#include "platform/qt/qt_style.h"
#include "platform/qt/qt_test_tools.h"

#include <QComboBox>
#include <QHoverEvent>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QTableWidget>
#include <QToolButton>
#include <QTreeView>
#include <QVBoxLayout>
#include <algorithm>
#include <string>

namespace cuedrill::platform::qt {

namespace {

QPalette dark_theme()
{
    QPalette palette(QColor(53, 53, 53), QColor(42, 42, 42));
    palette.setColor(QPalette::Base, QColor(35, 35, 35));
    for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(role, QColor(238, 238, 238));
    palette.setColor(QPalette::Highlight, QColor(42, 130, 218));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    return palette;
}

/// A dark theme, or a light one.
class ThemeTest : public testing::TestWithParam<bool> {
protected:
    ThemeTest()
    {
        ProgramStyle(QStringLiteral("Fusion")).polish(theme);
        window.setPalette(theme);
        layout.setContentsMargins(10, 10, 10, 10);
    }

    void show()
    {
        window.resize(300, 120);
        window.show();
        window.activateWindow();
        QCoreApplication::processEvents();
    }

    static QImage picture_of(QWidget& widget) { return widget.grab().toImage(); }

    /// `focused` lies at `area` of the window.
    void check_ring(QWidget& shown, const QRect& area, QWidget& focused)
    {
        focused.clearFocus();
        const QPoint edge(area.center().x(), area.top() + 1);
        const QColor before = picture_of(shown).pixelColor(edge);
        focused.setFocus(Qt::TabFocusReason);
        ASSERT_TRUE(focused.hasFocus());
        const QImage picture = picture_of(shown);
        const QColor ring = picture.pixelColor(edge);
        EXPECT_EQ(ring, focus_colour(theme));
        EXPECT_NE(ring, before);
        EXPECT_EQ(picture.pixelColor(edge.x(), area.bottom()), ring);
        EXPECT_EQ(picture.pixelColor(area.left(), area.center().y()), ring);
        EXPECT_EQ(picture.pixelColor(area.right(), area.center().y()), ring);
        EXPECT_GE(contrast(ring, picture.pixelColor(edge.x(), area.top() - 2)), part_contrast) << "outside";
        // Next to the ring there may be a thin line of the contents.
        const auto inside = [&](int depth) { return picture.pixelColor(area.left() + 8, area.top() + depth); };
        EXPECT_GE(std::max(contrast(ring, inside(2)), contrast(ring, inside(3))), part_contrast) << "inside";
    }

    void check_ring(QWidget& widget)
    {
        SCOPED_TRACE(widget.metaObject()->className());
        QPushButton other;
        layout.addWidget(&widget);
        layout.addWidget(&other);
        show();
        check_ring(window, widget.geometry(), widget);
    }

    QPalette theme = GetParam() ? dark_theme() : QApplication::style()->standardPalette();
    QWidget window;
    QVBoxLayout& layout = *new QVBoxLayout(&window);
};

using FocusRing = ThemeTest;

TEST_P(FocusRing, is_around_a_button)
{
    QPushButton button(QStringLiteral("Yes"));
    check_ring(button);
}

TEST_P(FocusRing, is_around_a_button_of_the_file_dialog)
{
    QToolButton button;
    check_ring(button);
}

TEST_P(FocusRing, is_around_a_line)
{
    QLineEdit line;
    check_ring(line);
}

TEST_P(FocusRing, is_around_a_choice)
{
    QComboBox choice;
    choice.addItem(QStringLiteral("Word"));
    check_ring(choice);
}

TEST_P(FocusRing, is_around_a_table)
{
    QTableWidget table(2, 1);
    check_ring(table);
}

TEST_P(FocusRing, is_around_the_lists_of_the_file_dialog)
{
    QTreeView tree;
    check_ring(tree);
    QListView list;
    check_ring(list);
}

TEST_P(FocusRing, is_around_a_text)
{
    QPlainTextEdit text;
    text.setReadOnly(true);
    check_ring(text);
}

TEST_P(FocusRing, is_around_a_list_in_its_card)
{
    LineView list;
    list.show_lines({"02 - one", "03 - two"});
    Card card;
    card.surround(list);
    layout.addWidget(&card);
    show();
    check_ring(window, card.geometry(), list);
    list.setParent(nullptr);
}

TEST_P(FocusRing, is_around_the_text_of_a_box)
{
    AnsweredBox box(nullptr, false);
    box.setPalette(theme);
    box.setText(QStringLiteral("The correct answer is: Rome"));
    QLabel& label = *box.text_label();
    label.setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    label.setFocusPolicy(Qt::StrongFocus);
    box.show();
    box.activateWindow();
    QCoreApplication::processEvents();
    check_ring(box, label.geometry().adjusted(-4, -4, 4, 4), label);
}

TEST_P(FocusRing, comes_and_goes_with_the_focus)
{
    QPlainTextEdit text;
    QPushButton other;
    layout.addWidget(&text);
    layout.addWidget(&other);
    show();
    struct Painted : QObject {
        bool eventFilter(QObject* /*watched*/, QEvent* event) override
        {
            count += event->type() == QEvent::Paint ? 1 : 0;
            return false;
        }
        int count = 0;
    } painted;
    text.setFocus();
    QCoreApplication::processEvents();
    text.installEventFilter(&painted);
    other.setFocus();
    QCoreApplication::processEvents();
    EXPECT_GT(painted.count, 0) << "the frame is painted again";
}

class RowsOfAList : public ThemeTest {
protected:
    RowsOfAList()
    {
        list.show_lines({"02 - one", "03 - two", "04 - three"});
        layout.addWidget(&list);
        show();
    }

    ~RowsOfAList() override { list.setParent(nullptr); }

    /// The ground at the end of a row, where there is no text.
    QColor ground(int row)
    {
        const QRect place = list.visualRect(list.model()->index(row, 0));
        return picture_of(*list.viewport()).pixelColor(list.viewport()->width() - 3, place.center().y());
    }

    LineView list;
};

TEST_P(RowsOfAList, can_be_read_when_current_without_the_focus)
{
    list.mark(1);
    list.clearFocus();
    EXPECT_NE(ground(1), ground(2)) << "the current row has another ground";
    EXPECT_GE(contrast(theme.color(QPalette::Text), ground(1)), text_contrast);
}

TEST_P(RowsOfAList, can_be_read_under_the_pointer)
{
    const QPointF place = list.visualRect(list.model()->index(1, 0)).center();
    QHoverEvent event(QEvent::HoverEnter, place, place, QPointF(-1, -1));
    QCoreApplication::sendEvent(list.viewport(), &event);
    EXPECT_NE(ground(1), ground(2)) << "the row under the pointer has another ground";
    EXPECT_GE(contrast(theme.color(QPalette::Text), ground(1)), text_contrast);
}

/// The key of the style that the program's own one is based on.
std::string style_in_use()
{
    return static_cast<const QProxyStyle*>(QApplication::style())->baseStyle()->name().toLower().toStdString();
}

TEST(StyleOfTheProgram, is_that_of_the_command_line_or_of_the_environment_and_else_the_usual_one)
{
    QApplication::setStyle(QStringLiteral("Windows"));
    set_up_application(true);
    EXPECT_EQ(style_in_use(), "windows");

    set_up_application();
    EXPECT_EQ(style_in_use(), "fusion");

    QApplication::setStyle(QStringLiteral("Windows"));
    qputenv("QT_STYLE_OVERRIDE", "Windows");
    set_up_application();
    qunsetenv("QT_STYLE_OVERRIDE");
    EXPECT_EQ(style_in_use(), "windows");

    set_up_application();
}

TEST(StyleOfTheProgram, is_kept_when_it_is_set_up_again)
{
    QApplication::setStyle(QStringLiteral("Windows"));
    set_up_application(true);
    set_up_application(true);
    EXPECT_EQ(style_in_use(), "windows");
    set_up_application();
}

const auto name_of_theme = [](const auto& info) { return std::string(info.param ? "dark" : "light"); };
INSTANTIATE_TEST_SUITE_P(Themes, FocusRing, testing::Bool(), name_of_theme);
INSTANTIATE_TEST_SUITE_P(Themes, RowsOfAList, testing::Bool(), name_of_theme);

} // namespace

} // namespace cuedrill::platform::qt
