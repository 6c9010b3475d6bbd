#include "platform/qt/qt_toolbar.h"

#include <QAction>
#include <QEvent>
#include <algorithm>

namespace cuedrill::platform::qt {

namespace {

// Narrow enough for all toolbar buttons to fit into one row of a window 800 pixels wide.
constexpr int gap = 1;
constexpr int row_gap = 3;

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
    buttons_.push_back(&button);
    setTabOrder(&button, &more_);
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
    for (const QPushButton* button : buttons_)
        height = std::max(height, button->sizeHint().height());
    return height;
}

int Toolbar::height_for(int width, int most_rows) const
{
    const int rows = std::max(1, static_cast<int>(arrangement(width, most_rows).rows.size()));
    return rows * row_height() + (rows - 1) * row_gap;
}

QSize Toolbar::sizeHint() const
{
    int width = -gap;
    for (const QPushButton* button : buttons_)
        width += width_of(*button) + gap;
    return {std::max(0, width), row_height()};
}

QSize Toolbar::minimumSizeHint() const
{
    return {width_of(more_), row_height()};
}

Toolbar::Arrangement Toolbar::arrangement(int width, int most_rows) const
{
    // The last row keeps room for the button of the menu, unless that is not needed.
    for (const int reserved : {0, width_of(more_) + gap}) {
        Arrangement result;
        result.rows.emplace_back();
        int right = 0;
        for (QPushButton* const button : buttons_) {
            const auto room = [&] {
                const bool last = static_cast<int>(result.rows.size()) == most_rows;
                return width - (last ? reserved : 0);
            };
            if (right + width_of(*button) > room() && right > 0 && static_cast<int>(result.rows.size()) < most_rows) {
                result.rows.emplace_back();
                right = 0;
            }
            if (!result.in_menu.empty() || right + width_of(*button) > room()) {
                result.in_menu.push_back(button);
                continue;
            }
            result.rows.back().push_back(button);
            right += width_of(*button) + gap;
        }
        if (result.in_menu.empty() || reserved > 0)
            return result;
    }
    return {};
}

void Toolbar::arrange()
{
    const Arrangement now = arrangement(width(), most_rows_);
    const int height = row_height();
    int top = 0;
    int right = 0;
    for (const std::vector<QPushButton*>& row : now.rows) {
        right = 0;
        for (QPushButton* const button : row) {
            button->setGeometry(right, top, width_of(*button), height);
            right += width_of(*button) + gap;
        }
        top += height + row_gap;
    }
    more_.setGeometry(right, top - height - row_gap, width_of(more_), height);
    in_menu_ = now.in_menu;
    for (QPushButton* const button : buttons_)
        button->setVisible(std::find(in_menu_.begin(), in_menu_.end(), button) == in_menu_.end());
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
