#include "platform/qt/qt_form1_controls.h"
#include "platform/qt/qt_look.h"

#include <QBoxLayout>
#include <QEvent>
#include <QGridLayout>
#include <QMenuBar>
#include <cstddef>
#include <initializer_list>

namespace cuedrill::platform::qt {

namespace {

constexpr int window_margin = 14;
constexpr int wide_gap = 12;
constexpr int narrow_gap = 5;
constexpr int row_gap = 2; // for the bars and for the figures beside them, so that they align
// Narrow enough for all toolbar buttons to fit into one row of a window 800 pixels wide.
constexpr int toolbar_gap = 1;
// In front of "+", the first button of a verdict, and of "Edit".
constexpr std::size_t first_of_verdict = 5;
constexpr std::size_t first_of_editing = 7;
constexpr int narrowest_group_gap = 2;
constexpr int widest_group_gap = 14;
constexpr int button_padding = 12;
constexpr QSize smallest_window{640, 480};

QBoxLayout* row(int gap)
{
    auto* layout = new QHBoxLayout;
    layout->setSpacing(gap);
    return layout;
}

QBoxLayout* column(int gap)
{
    auto* layout = new QVBoxLayout;
    layout->setSpacing(gap);
    return layout;
}

/// Reserves the space of a widget while it is hidden, so that its neighbours do not move.
void keep_room_when_hidden(QWidget& widget)
{
    QSizePolicy policy = widget.sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    widget.setSizePolicy(policy);
}

/// Lets a label take all the available width, whatever the length of its text.
void fill_width(QWidget& label)
{
    label.setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    keep_room_when_hidden(label);
}

/// The space between two groups of the toolbar: as much as there is room for.
QWidget* group_gap()
{
    auto* gap = new QWidget;
    gap->setMinimumWidth(narrowest_group_gap);
    gap->setMaximumWidth(widest_group_gap);
    return gap;
}

QBoxLayout* toolbar(QtForm1Controls& c)
{
    QBoxLayout* buttons = row(toolbar_gap);
    for (std::size_t place = 0; place < c.pb.size(); ++place) {
        if (place == first_of_verdict || place == first_of_editing)
            buttons->addWidget(group_gap(), 1);
        buttons->addWidget(&c.pb[place].widget());
    }
    buttons->addStretch(4); // it takes its share while the gaps are narrower than they may be
    return buttons;
}

QBoxLayout* text_area(CaptionLabel& heading, QtTextBox& text)
{
    auto* card = new Card;
    card->surround(text.widget());
    fill_width(heading);
    QBoxLayout* area = column(narrow_gap);
    area->addWidget(&heading);
    area->addWidget(card, 1);
    return area;
}

QBoxLayout* question_and_answer(QtForm1Controls& c)
{
    QBoxLayout* areas = row(wide_gap);
    areas->addLayout(text_area(c.screen.label(&Screen::lab_q), c.Text_q), 1);
    areas->addLayout(text_area(c.screen.label(&Screen::panel_a), c.Text_a), 1);
    return areas;
}

void add_figure(QBoxLayout& figures, CaptionLabel& caption, CaptionLabel& value)
{
    keep_room_when_hidden(caption);
    keep_room_when_hidden(value);
    // A fixed minimum width keeps the captions in place when figures appear and disappear.
    value.setMinimumWidth(value.fontMetrics().averageCharWidth() * 6);
    figures.addWidget(&caption);
    figures.addWidget(&value);
    figures.addSpacing(2 * wide_gap);
}

QBoxLayout* question_figures(QtForm1Controls& c)
{
    QBoxLayout* figures = row(narrow_gap + 1);
    add_figure(*figures, c.screen.label(&Screen::lab_q_level), c.screen.label(&Screen::PANEL_Q_LEVEL));
    add_figure(*figures, c.screen.label(&Screen::lab_q_attempts), c.screen.label(&Screen::PANEL_Q_ATTEMPTS));
    add_figure(*figures, c.screen.label(&Screen::lab_fails), c.screen.label(&Screen::PANEL_FAILS));
    add_figure(*figures, c.screen.label(&Screen::lab_elapsed), c.screen.label(&Screen::PANEL_ELAPSED));
    figures->addStretch(1);
    return figures;
}

QBoxLayout* level_rows(QtForm1Controls& c)
{
    QBoxLayout* rows = column(row_gap);
    for (int level = 0; level < level_panels; ++level)
        rows->addWidget(&c.screen.level_row(level));
    return rows;
}

void add_pair(QGridLayout& grid, int line, CaptionLabel& caption, CaptionLabel& value)
{
    value.setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    value.setMinimumWidth(value.fontMetrics().averageCharWidth() * 9);
    grid.addWidget(&caption, line, 0);
    grid.addWidget(&value, line, 1);
}

QGridLayout* pairs()
{
    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(wide_gap);
    grid->setVerticalSpacing(row_gap);
    return grid;
}

QGridLayout* course_figures(QtForm1Controls& c)
{
    QGridLayout* grid = pairs();
    add_pair(*grid, 0, c.screen.label(&Screen::lab_total), c.screen.label(&Screen::panel_total));
    add_pair(*grid, 1, c.screen.label(&Screen::lab_nr_unpassed), c.screen.label(&Screen::panel_nr_unpassed));
    add_pair(*grid, 2, c.screen.label(&Screen::lab_score), c.screen.label(&Screen::Panel_score));
    grid->setRowStretch(3, 1);
    return grid;
}

QGridLayout* time_figures(QtForm1Controls& c)
{
    QGridLayout* grid = pairs();
    add_pair(*grid, 0, c.screen.label(&Screen::lab_open_time), c.screen.label(&Screen::panel_open_time));
    add_pair(*grid, 1, c.screen.label(&Screen::lab_time_today), c.screen.label(&Screen::panel_time_today));
    add_pair(*grid, 2, c.screen.label(&Screen::lab_time_ever), c.screen.label(&Screen::panel_time_ever));
    add_pair(*grid, 3, c.screen.label(&Screen::lab_time_now), c.screen.label(&Screen::Panel_time_now));
    grid->setRowStretch(4, 1);
    return grid;
}

QWidget* statistics(QtForm1Controls& c)
{
    QBoxLayout* figures = row(2 * wide_gap);
    figures->addLayout(level_rows(c), 2);
    figures->addWidget(&c.screen.due_chart(), 3);
    figures->addLayout(course_figures(c));
    figures->addLayout(time_figures(c));

    QWidget& frame = c.frame_stats.widget();
    auto* inside = new QVBoxLayout(&frame);
    inside->setContentsMargins(wide_gap, wide_gap - 2, 2 * wide_gap, wide_gap - 2);
    inside->setSpacing(narrow_gap);
    inside->addLayout(figures);
    return &frame;
}

/// Hint and list in the same place; only one is visible at a time.
QWidget* hint_and_list(QtForm1Controls& c)
{
    QWidget& panel = c.panel_lista.widget();
    auto* inside = new QGridLayout(&panel);
    inside->setContentsMargins(0, 0, 0, 0);
    for (QWidget* content : std::initializer_list<QWidget*>{&c.t_hint.widget(), &c.listav.widget()}) {
        auto* card = new Card;
        card->surround(*content);
        inside->addWidget(card, 0, 0);
    }
    c.listav.set_visible(false);
    // As high as the statistics, which it replaces.
    panel.setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Ignored);
    return &panel;
}

/// Statistics, and hint or list, in the same place; only one is visible at a time. Both keep their space while hidden,
/// so that nothing moves when one replaces the other.
QGridLayout* shared_place(QtForm1Controls& c)
{
    auto* place = new QGridLayout;
    for (QWidget* area : {statistics(c), hint_and_list(c)}) {
        keep_room_when_hidden(*area);
        place->addWidget(area, 0, 0);
    }
    c.panel_lista.set_visible(false);
    return place;
}

/// The prompt, and beside it the strip in which the logic positions the buttons.
QBoxLayout* dialog_line(QtForm1Controls& c)
{
    QWidget& strip = c.dialog_strip.widget();
    for (QtButton* button : {&c.bot_yes, &c.bot_no, &c.bot_other})
        button->widget().setParent(&strip);
    strip.setFixedHeight(c.bot_yes.widget().sizeHint().height() + button_padding);
    strip.setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);

    fill_width(c.screen.label(&Screen::panel_dialog));
    QBoxLayout* line = row(wide_gap);
    line->addWidget(&c.screen.label(&Screen::panel_dialog), 2);
    line->addWidget(&strip, 3);
    return line;
}

/// Gives the list a share of the window's height while it is visible, because the user scrolls through it. Otherwise
/// the text boxes get it all.
class RoomForList : public QObject {
public:
    RoomForList(QWidget& list, QBoxLayout& lines, QLayout& place) : QObject(&list), lines_(lines), place_(place)
    {
        list.installEventFilter(this);
    }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::ShowToParent || event->type() == QEvent::HideToParent)
            lines_.setStretchFactor(&place_, event->type() == QEvent::ShowToParent ? 1 : 0);
        return QObject::eventFilter(watched, event);
    }

private:
    QBoxLayout& lines_;
    QLayout& place_;
};

} // namespace

void lay_out(QtForm1Controls& c)
{
    auto* content = new QWidget;
    auto* lines = new QVBoxLayout(content);
    lines->setContentsMargins(window_margin, wide_gap, window_margin, narrow_gap);
    lines->setSpacing(wide_gap - 2);
    lines->addLayout(toolbar(c));
    lines->addLayout(question_and_answer(c), 1);
    lines->addLayout(question_figures(c));
    // The tab order from here: the hint or list if visible, otherwise the dialog, which is the next thing to use after
    // most commands.
    c.bot_focus.widget().setParent(content);
    QLayout* const place = shared_place(c);
    lines->addLayout(place);
    new RoomForList(c.listav.widget(), *lines, *place);
    lines->addLayout(dialog_line(c));
    CaptionLabel& status = c.screen.label(&Screen::P_status);
    fill_width(status);
    status.setMinimumHeight(status.sizeHint().height() + narrow_gap);
    lines->addWidget(&status);

    QMainWindow& window = c.window.widget();
    window.setCentralWidget(content);
    window.setMinimumSize(smallest_window);
    // Lays out now, so that the strip has its width before the window is first shown.
    window.layout()->activate();
    content->layout()->activate();
}

} // namespace cuedrill::platform::qt
