#include "platform/qt/qt_accessible_lines.h"

#include "platform/qt/qt_line_view.h"

#include <QAccessibleWidget>
#include <QPointer>
#include <unordered_map>

namespace cuedrill::platform::qt {

namespace {

/// One line of the list.
class AccessibleLine : public QAccessibleInterface,
                       public QAccessibleActionInterface,
                       public QAccessibleTableCellInterface {
public:
    AccessibleLine(LineView& view, int row) : view_(&view), row_(row) {}

    [[nodiscard]] int row() const { return row_; }

    [[nodiscard]] bool isValid() const override { return view() != nullptr; }
    [[nodiscard]] QObject* object() const override { return nullptr; }
    [[nodiscard]] QAccessibleInterface* parent() const override { return QAccessible::queryAccessibleInterface(view_); }
    [[nodiscard]] QAccessibleInterface* child(int /*index*/) const override { return nullptr; }
    [[nodiscard]] QAccessibleInterface* childAt(int /*x*/, int /*y*/) const override { return nullptr; }
    [[nodiscard]] int childCount() const override { return 0; }
    [[nodiscard]] int indexOfChild(const QAccessibleInterface* /*child*/) const override { return -1; }
    [[nodiscard]] QAccessible::Role role() const override { return QAccessible::ListItem; }
    [[nodiscard]] QString text(QAccessible::Text what) const override
    {
        const LineView* const present = view();
        if (present == nullptr)
            return {};
        if (what == QAccessible::Description && present->marked_row() == row_)
            return QStringLiteral("question on display");
        return what == QAccessible::Name ? present->lines().shown(row_) : QString();
    }
    void setText(QAccessible::Text /*what*/, const QString& /*text*/) override {}
    [[nodiscard]] QRect rect() const override;
    [[nodiscard]] QAccessible::State state() const override;

    void* interface_cast(QAccessible::InterfaceType type) override
    {
        if (type == QAccessible::ActionInterface)
            return static_cast<QAccessibleActionInterface*>(this);
        return type == QAccessible::TableCellInterface ? static_cast<QAccessibleTableCellInterface*>(this) : nullptr;
    }
    [[nodiscard]] QStringList actionNames() const override { return {pressAction(), setFocusAction()}; }
    void doAction(const QString& name) override;
    [[nodiscard]] QStringList keyBindingsForAction(const QString& /*name*/) const override { return {}; }

    [[nodiscard]] bool isSelected() const override { return state().selected; }
    [[nodiscard]] QList<QAccessibleInterface*> columnHeaderCells() const override { return {}; }
    [[nodiscard]] QList<QAccessibleInterface*> rowHeaderCells() const override { return {}; }
    [[nodiscard]] int columnIndex() const override { return 0; }
    [[nodiscard]] int rowIndex() const override { return row_; }
    [[nodiscard]] int columnExtent() const override { return 1; }
    [[nodiscard]] int rowExtent() const override { return 1; }
    [[nodiscard]] QAccessibleInterface* table() const override { return parent(); }

private:
    /// The list; null if it, or this line, no longer exists.
    [[nodiscard]] LineView* view() const
    {
        LineView* const present = view_.data();
        return present != nullptr && row_ < present->lines().rowCount() ? present : nullptr;
    }

    /// In viewport coordinates.
    [[nodiscard]] QRect place_in(const LineView& list) const { return list.visualRect(list.lines().index(row_)); }

    QPointer<LineView> view_;
    int row_;
};

QRect AccessibleLine::rect() const
{
    const LineView* const list = view();
    if (list == nullptr)
        return {};
    const QRect inside = place_in(*list);
    return {list->viewport()->mapToGlobal(inside.topLeft()), inside.size()};
}

QAccessible::State AccessibleLine::state() const
{
    QAccessible::State state;
    const LineView* const list = view();
    if (list == nullptr) {
        state.invalid = true;
        return state;
    }
    const bool current = list->currentIndex().row() == row_;
    state.disabled = !list->isEnabled();
    state.invisible = !list->isVisible();
    state.offscreen = !place_in(*list).intersects(list->viewport()->rect());
    state.selectable = true;
    state.selected = current;
    state.focusable = true;
    state.focused = current && list->hasFocus();
    return state;
}

void AccessibleLine::doAction(const QString& name)
{
    LineView* const list = view();
    if (list == nullptr || !list->isEnabled() || !list->isVisible())
        return;
    if (name == pressAction()) {
        // Queued, because choosing may open a modal box, and assistive technology blocks until its request is answered.
        QMetaObject::invokeMethod(
            list, [list, row = row_] { list->choose(row); }, Qt::QueuedConnection);
    } else if (name == setFocusAction()) {
        list->setCurrentIndex(list->lines().index(row_));
        list->setFocus(Qt::OtherFocusReason);
    }
}

/// The list. Its lines are created on demand: there may be many, and few are ever looked at. It also presents itself as
/// a table with one column; this tells assistive technology that the list manages its descendants, so clients do not
/// walk through all lines or cache them.
class AccessibleLines : public QAccessibleWidget, public QAccessibleTableInterface {
public:
    explicit AccessibleLines(LineView& view) : QAccessibleWidget(&view, QAccessible::List), view_(view)
    {
        QObject::connect(view_.model(), &QAbstractItemModel::modelReset, &context_, [this] { forget_lines(); });
    }
    AccessibleLines(const AccessibleLines&) = delete;
    AccessibleLines& operator=(const AccessibleLines&) = delete;
    ~AccessibleLines() override { forget_lines(); }

    [[nodiscard]] int childCount() const override { return view_.lines().rowCount(); }
    [[nodiscard]] QAccessibleInterface* child(int index) const override;
    [[nodiscard]] int indexOfChild(const QAccessibleInterface* child) const override
    {
        const auto* const line = dynamic_cast<const AccessibleLine*>(child);
        return line != nullptr ? line->row() : -1;
    }
    [[nodiscard]] QAccessibleInterface* childAt(int x, int y) const override
    {
        return child(view_.indexAt(view_.viewport()->mapFromGlobal(QPoint(x, y))).row());
    }
    [[nodiscard]] QAccessibleInterface* focusChild() const override { return child(current_row()); }

    void* interface_cast(QAccessible::InterfaceType type) override
    {
        return type == QAccessible::TableInterface ? static_cast<QAccessibleTableInterface*>(this)
                                                   : QAccessibleWidget::interface_cast(type);
    }
    [[nodiscard]] QAccessibleInterface* caption() const override { return nullptr; }
    [[nodiscard]] QAccessibleInterface* summary() const override { return nullptr; }
    [[nodiscard]] QAccessibleInterface* cellAt(int row, int column) const override
    {
        return column == 0 ? child(row) : nullptr;
    }
    [[nodiscard]] int selectedCellCount() const override { return selectedRowCount(); }
    [[nodiscard]] QList<QAccessibleInterface*> selectedCells() const override
    {
        QAccessibleInterface* const line = focusChild();
        return line != nullptr ? QList{line} : QList<QAccessibleInterface*>();
    }
    [[nodiscard]] QString columnDescription(int /*column*/) const override { return {}; }
    [[nodiscard]] QString rowDescription(int /*row*/) const override { return {}; }
    [[nodiscard]] int selectedColumnCount() const override { return 0; }
    [[nodiscard]] int selectedRowCount() const override { return current_row() >= 0 ? 1 : 0; }
    [[nodiscard]] int columnCount() const override { return 1; }
    [[nodiscard]] int rowCount() const override { return childCount(); }
    [[nodiscard]] QList<int> selectedColumns() const override { return {}; }
    [[nodiscard]] QList<int> selectedRows() const override
    {
        return current_row() >= 0 ? QList{current_row()} : QList<int>();
    }
    [[nodiscard]] bool isColumnSelected(int /*column*/) const override { return false; }
    [[nodiscard]] bool isRowSelected(int row) const override { return row >= 0 && row == current_row(); }
    bool selectRow(int row) override;
    bool selectColumn(int /*column*/) override { return false; }
    bool unselectRow(int /*row*/) override { return false; }
    bool unselectColumn(int /*column*/) override { return false; }
    void modelChange(QAccessibleTableModelChangeEvent* /*event*/) override
    {
        // Nothing to do: the list forgets its lines on the model's own signals, which come even if no client listens.
    }

private:
    /// -1 if no line is current.
    [[nodiscard]] int current_row() const { return view_.currentIndex().row(); }

    void forget_lines()
    {
        for (const auto& [row, id] : lines_)
            QAccessible::deleteAccessibleInterface(id);
        lines_.clear();
    }

    LineView& view_;
    mutable std::unordered_map<int, QAccessible::Id> lines_;
    QObject context_;
};

QAccessibleInterface* AccessibleLines::child(int index) const
{
    if (index < 0 || index >= childCount())
        return nullptr;
    const auto known = lines_.find(index);
    if (known != lines_.end())
        return QAccessible::accessibleInterface(known->second);
    auto* const line = new AccessibleLine(view_, index);
    lines_.emplace(index, QAccessible::registerAccessibleInterface(line));
    return line;
}

/// Makes the line current. Choosing it takes the line's own action.
bool AccessibleLines::selectRow(int row)
{
    if (row < 0 || row >= childCount() || !view_.isEnabled())
        return false;
    view_.setCurrentIndex(view_.lines().index(row));
    return true;
}

QAccessibleInterface* make_interface(const QString& /*class_name*/, QObject* object)
{
    auto* const view = dynamic_cast<LineView*>(object);
    return view != nullptr ? new AccessibleLines(*view) : nullptr;
}

} // namespace

void make_lines_accessible()
{
    QAccessible::installFactory(make_interface); // once, however often this function is called
}

} // namespace cuedrill::platform::qt
