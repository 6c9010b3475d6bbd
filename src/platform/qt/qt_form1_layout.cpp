#include "platform/qt/qt_dialog_line.h"
#include "platform/qt/qt_folding.h"
#include "platform/qt/qt_form1_controls.h"
#include "platform/qt/qt_toolbar.h"

#include <QBoxLayout>
#include <QGridLayout>
#include <QMenuBar>
#include <cstddef>
#include <initializer_list>

namespace cuedrill::platform::qt {

namespace {

constexpr int window_margin = 14;
constexpr int wide_gap = 12;
constexpr int narrow_gap = 5;
constexpr int row_gap = 2;      // for the bars and for the figures beside them, so that they align
constexpr int figures_gap = 18; // between the parts of the statistics
// In front of "+", the first button of a verdict, and of "Edit".
constexpr std::size_t first_of_verdict = 5;
constexpr std::size_t first_of_editing = 7;
// Where the window is small, the folding sees to it that the texts are larger.
constexpr QSize smallest_text{60, 24};
// Small enough for a screen of 1024 × 600 pixels at three times the size.
constexpr QSize smallest_window{320, 150};

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

Toolbar* toolbar(QtForm1Controls& c)
{
    auto* buttons = new Toolbar;
    for (std::size_t place = 0; place < c.pb.size(); ++place) {
        if (place == first_of_verdict || place == first_of_editing)
            buttons->begin_group();
        buttons->add(c.pb[place].widget());
    }
    return buttons;
}

/// The headings of question and answer in a row of their own, so that the two boxes begin at the same height.
QWidget* headings(QtForm1Controls& c)
{
    auto* area = new QWidget;
    QBoxLayout* labels = row(wide_gap);
    labels->setContentsMargins(0, 0, 0, 0);
    for (CaptionLabel* heading : {&c.screen.label(&Screen::lab_q), &c.screen.label(&Screen::panel_a)}) {
        fill_width(*heading);
        heading->set_wrapping(true);
        labels->addWidget(heading, 1);
    }
    area->setLayout(labels);
    return area;
}

QBoxLayout* question_and_answer(QtForm1Controls& c)
{
    QBoxLayout* areas = row(wide_gap);
    for (QtTextBox* text : {&c.Text_q, &c.Text_a}) {
        text->widget().setMinimumSize(smallest_text);
        auto* card = new Card;
        card->surround(text->widget());
        areas->addWidget(card, 1);
    }
    return areas;
}

void add_figure(QBoxLayout& figures, CaptionLabel& caption, CaptionLabel& value)
{
    keep_room_when_hidden(caption);
    keep_room_when_hidden(value);
    caption.keep_whole();
    value.keep_whole();
    // A fixed minimum width keeps the captions in place when figures appear and disappear.
    value.setMinimumWidth(value.fontMetrics().averageCharWidth() * 6);
    figures.addWidget(&caption);
    figures.addWidget(&value);
    figures.addSpacing(2 * wide_gap);
}

QWidget* question_figures(QtForm1Controls& c)
{
    auto* area = new QWidget;
    QBoxLayout* figures = row(narrow_gap + 1);
    add_figure(*figures, c.screen.label(&Screen::lab_q_level), c.screen.label(&Screen::PANEL_Q_LEVEL));
    add_figure(*figures, c.screen.label(&Screen::lab_q_attempts), c.screen.label(&Screen::PANEL_Q_ATTEMPTS));
    add_figure(*figures, c.screen.label(&Screen::lab_fails), c.screen.label(&Screen::PANEL_FAILS));
    add_figure(*figures, c.screen.label(&Screen::lab_elapsed), c.screen.label(&Screen::PANEL_ELAPSED));
    figures->addStretch(1);
    figures->setContentsMargins(0, 0, 0, 0);
    area->setLayout(figures);
    return area;
}

QBoxLayout* level_rows(QtForm1Controls& c)
{
    QBoxLayout* rows = column(row_gap);
    for (int level = 0; level < level_panels; ++level)
        rows->addWidget(&c.screen.level_row(level));
    return rows;
}

/// @param characters that the value has room for at least.
void add_pair(QGridLayout& grid, int line, CaptionLabel& caption, CaptionLabel& value, int characters)
{
    caption.keep_whole();
    value.keep_whole();
    value.setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    value.setMinimumWidth(value.fontMetrics().averageCharWidth() * characters);
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
    constexpr int characters = 7;
    QGridLayout* grid = pairs();
    add_pair(*grid, 0, c.screen.label(&Screen::lab_total), c.screen.label(&Screen::panel_total), characters);
    add_pair(*grid, 1, c.screen.label(&Screen::lab_nr_unpassed), c.screen.label(&Screen::panel_nr_unpassed),
             characters);
    add_pair(*grid, 2, c.screen.label(&Screen::lab_score), c.screen.label(&Screen::Panel_score), characters);
    grid->setRowStretch(3, 1);
    return grid;
}

QGridLayout* time_figures(QtForm1Controls& c)
{
    constexpr int characters = 9;
    QGridLayout* grid = pairs();
    add_pair(*grid, 0, c.screen.label(&Screen::lab_open_time), c.screen.label(&Screen::panel_open_time), characters);
    add_pair(*grid, 1, c.screen.label(&Screen::lab_time_today), c.screen.label(&Screen::panel_time_today), characters);
    add_pair(*grid, 2, c.screen.label(&Screen::lab_time_ever), c.screen.label(&Screen::panel_time_ever), characters);
    add_pair(*grid, 3, c.screen.label(&Screen::lab_time_now), c.screen.label(&Screen::Panel_time_now), characters);
    grid->setRowStretch(4, 1);
    return grid;
}

QWidget* statistics(QtForm1Controls& c, QWidget& unfolded)
{
    auto* figures = new QHBoxLayout(&unfolded);
    figures->setContentsMargins(0, 0, 0, 0);
    // Narrow enough for all bars of the picture of what is due in the window's first size.
    figures->setSpacing(figures_gap);
    figures->addLayout(level_rows(c));
    figures->addWidget(&c.screen.due_chart());
    figures->addLayout(course_figures(c));
    figures->addLayout(time_figures(c));

    QWidget& frame = c.frame_stats.widget();
    auto* inside = new QVBoxLayout(&frame);
    inside->setContentsMargins(wide_gap, wide_gap - 2, wide_gap + 2, wide_gap - 2);
    inside->setSpacing(narrow_gap);
    inside->addWidget(&unfolded);
    inside->addWidget(&c.screen.folded_figures());
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
        content->setMinimumSize(smallest_text);
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
QWidget* shared_place(QtForm1Controls& c, QWidget& unfolded_statistics)
{
    auto* area_of_both = new QWidget;
    auto* place = new QGridLayout(area_of_both);
    place->setContentsMargins(0, 0, 0, 0);
    for (QWidget* area : {statistics(c, unfolded_statistics), hint_and_list(c)}) {
        keep_room_when_hidden(*area);
        place->addWidget(area, 0, 0);
    }
    c.panel_lista.set_visible(false);
    return area_of_both;
}

/// The prompt, and beside it the strip in which the logic positions the buttons.
DialogLine* dialog_line(QtForm1Controls& c)
{
    QWidget& strip = c.dialog_strip.widget();
    for (QtButton* button : {&c.bot_yes, &c.bot_no, &c.bot_other})
        button->widget().setParent(&strip);
    CaptionLabel& prompt = c.screen.label(&Screen::panel_dialog);
    prompt.set_wrapping(true);
    return new DialogLine(prompt, strip, {&c.bot_yes.widget(), &c.bot_no.widget(), &c.bot_other.widget()});
}

} // namespace

void lay_out(QtForm1Controls& c)
{
    auto* content = new QWidget;
    auto* lines = new QVBoxLayout(content);
    lines->setContentsMargins(window_margin, wide_gap, window_margin, narrow_gap);
    lines->setSpacing(wide_gap - 2);
    Toolbar* const buttons = toolbar(c);
    lines->addWidget(buttons);
    QWidget* const captions = headings(c);
    QBoxLayout* const texts = column(heading_gap);
    texts->addWidget(captions);
    texts->addLayout(question_and_answer(c), 1);
    lines->addLayout(texts, 1);
    QWidget* const figures = question_figures(c);
    lines->addWidget(figures);
    // The tab order from here: the hint or list if visible, otherwise the dialog, which is the next thing to use after
    // most commands.
    c.bot_focus.widget().setParent(content);
    auto* const unfolded_statistics = new QWidget;
    QWidget* const place = shared_place(c, *unfolded_statistics);
    lines->addWidget(place);
    DialogLine* const dialog = dialog_line(c);
    lines->addWidget(dialog);
    CaptionLabel& status = c.screen.label(&Screen::P_status);
    fill_width(status);
    status.set_wrapping(true);
    status.setMinimumHeight(status.sizeHint().height() + narrow_gap);
    lines->addWidget(&status);
    new Folding(*content, {*lines, *buttons, *captions, c.Text_q.widget(), c.Text_a.widget(), *figures, *place,
                           *unfolded_statistics, c.screen.folded_figures(), c.panel_lista.widget(), c.t_hint.widget(),
                           c.listav.widget(), *dialog, status});

    QMainWindow& window = c.window.widget();
    window.setCentralWidget(content);
    window.setMinimumSize(smallest_window);
    // Lays out now, so that the strip has its width before the window is first shown.
    window.layout()->activate();
    content->layout()->activate();
}

} // namespace cuedrill::platform::qt
