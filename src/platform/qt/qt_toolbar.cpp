#include "platform/qt/qt_toolbar.h"

#include <QAction>
#include <QEvent>
#include <algorithm>

namespace cuedrill::platform::qt {

namespace {

// Narrow enough for all toolbar buttons to fit into one row of a window 800 pixels wide.
constexpr int gap = 1;
constexpr int row_gap = 3;
constexpr int narrowest_group_gap = 6;
constexpr int widest_group_gap = 16;

int width_of(const QPushButton& button)
{
    return button.sizeHint().width();
}

} // namespace

Toolbar::Toolbar() : more_(*new QPushButton(QStringLiteral("More"), this))
{
    more_.setObjectName(QStringLiteral("more_commands"));
    more_.setAccessibleName(QStringLiteral("More commands"));
    more_.setFocusPolicy(Qt::TabFocus);
    more_.setMenu(&menu_);
    more_.hide();
    menu_.setObjectName(QStringLiteral("more_commands_menu"));
    connect(&menu_, &QMenu::aboutToShow, this, [this] { fill_menu(); });
}

void Toolbar::add(QPushButton& button)
{
    button.setParent(this);
    groups_.back().push_back(&button);
    setTabOrder(&button, &more_);
}

void Toolbar::begin_group()
{
    groups_.emplace_back();
}

void Toolbar::set_most_rows(int rows)
{
    if (rows == most_rows_)
        return;
    most_rows_ = rows;
    updateGeometry();
    arrange();
}

int Toolbar::row_height() const
{
    int height = 0;
    for (const Row& group : groups_) {
        for (const QPushButton* button : group)
            height = std::max(height, button->sizeHint().height());
    }
    return height;
}

int Toolbar::height_for(int width, int most_rows) const
{
    const int rows = std::max(1, static_cast<int>(arrangement(width, most_rows).rows.size()));
    return rows * row_height() + (rows - 1) * row_gap;
}

QSize Toolbar::sizeHint() const
{
    Row all;
    for (const Row& group : groups_)
        all.insert(all.end(), group.begin(), group.end());
    return {row_width(all, widest_group_gap), row_height()};
}

QSize Toolbar::minimumSizeHint() const
{
    return {width_of(more_), row_height()};
}

bool Toolbar::begins_group(const QPushButton& button) const
{
    return std::any_of(groups_.begin(), groups_.end(),
                       [&](const Row& group) { return !group.empty() && group.front() == &button; });
}

int Toolbar::row_width(const Row& row, int group_gap) const
{
    int width = 0;
    for (const QPushButton* const button : row) {
        if (width > 0)
            width += begins_group(*button) ? group_gap : gap;
        width += width_of(*button);
    }
    return width;
}

Toolbar::Arrangement Toolbar::arrangement(int width, int most_rows) const
{
    // The last row keeps room for the button of the menu, unless that is not needed.
    for (const int for_menu : {0, width_of(more_) + gap}) {
        const Room room{width, most_rows, for_menu};
        const Arrangement dense = filled(room, false);
        const Arrangement grouped = filled(room, true);
        if (grouped.in_menu.empty() && grouped.rows.size() == dense.rows.size())
            return grouped;
        if (dense.in_menu.empty() || for_menu > 0)
            return dense;
    }
    return {};
}

/// @param keep_groups begins a row with a group that has no room in the row before.
Toolbar::Arrangement Toolbar::filled(const Room& room, bool keep_groups) const
{
    Arrangement result;
    result.rows.emplace_back();
    const auto is_last_row = [&] { return static_cast<int>(result.rows.size()) == room.most_rows; };
    const auto has_room = [&](const Row& further) {
        Row row = result.rows.back();
        row.insert(row.end(), further.begin(), further.end());
        return row_width(row, narrowest_group_gap) <= room.width - (is_last_row() ? room.for_menu : 0);
    };
    const auto begin_row = [&] {
        if (!result.rows.back().empty() && !is_last_row())
            result.rows.emplace_back();
    };
    for (const Row& group : groups_) {
        if (keep_groups && !has_room(group))
            begin_row();
        for (QPushButton* const button : group) {
            if (!has_room({button}))
                begin_row();
            if (result.in_menu.empty() && has_room({button}))
                result.rows.back().push_back(button);
            else
                result.in_menu.push_back(button);
        }
    }
    return result;
}

/// The space between groups, the same in all rows.
int Toolbar::group_gap(const Arrangement& arrangement) const
{
    int fitting = widest_group_gap;
    const int room = width() - (arrangement.in_menu.empty() ? 0 : width_of(more_) + gap);
    const auto fits = [&](const Row& row) { return row_width(row, fitting) <= room; };
    while (fitting > narrowest_group_gap && !std::all_of(arrangement.rows.begin(), arrangement.rows.end(), fits))
        --fitting;
    return fitting;
}

void Toolbar::arrange()
{
    const Arrangement now = arrangement(width(), most_rows_);
    const int between_groups = group_gap(now);
    const int height = row_height();
    int top = 0;
    int right = 0;
    for (const Row& row : now.rows) {
        right = 0;
        for (QPushButton* const button : row) {
            if (right > 0)
                right += begins_group(*button) ? between_groups : gap;
            button->setGeometry(right, top, width_of(*button), height);
            right += width_of(*button);
        }
        top += height + row_gap;
    }
    more_.setGeometry(right > 0 ? right + gap : 0, top - height - row_gap, width_of(more_), height);
    in_menu_ = now.in_menu;
    for (const Row& group : groups_) {
        for (QPushButton* const button : group)
            button->setVisible(std::find(in_menu_.begin(), in_menu_.end(), button) == in_menu_.end());
    }
    more_.setVisible(!in_menu_.empty());
}

void Toolbar::fill_menu()
{
    menu_.clear();
    for (QPushButton* const button : in_menu_) {
        QAction* const entry = menu_.addAction(button->text());
        entry->setEnabled(button->isEnabled());
        // Queued, so that the menu is closed before the command runs.
        connect(entry, &QAction::triggered, button, &QPushButton::click, Qt::QueuedConnection);
    }
}

void Toolbar::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    arrange();
}

bool Toolbar::event(QEvent* event)
{
    // A button has a new width.
    if (event->type() == QEvent::LayoutRequest) {
        updateGeometry();
        arrange();
    }
    return QWidget::event(event);
}

} // namespace cuedrill::platform::qt
