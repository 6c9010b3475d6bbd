#include "common/errors.h"
#include "engine.h"
#include "list_of_questions.h"
#include "operations.h"
#include "platform/icu/icu_text_compare.h"
#include "platform/qt/qt_form1.h"
#include "platform/qt/qt_guard.h"

#include <QAbstractItemModel>
#include <QAbstractItemView>
#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QEvent>
#include <QMainWindow>
#include <QScrollBar>
#include <chrono>
#include <cstddef>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace cuedrill::bench {
namespace {

/// The list in the main window. Requires a QApplication.
class ListWindow final : private QObject {
public:
    ListWindow()
    {
        if (view_ == nullptr)
            throw common::Error("The main window has no list.");
        view_->viewport()->installEventFilter(this);
        form1_.controls().window.show();
        show({});
        wait_until_painted();
    }

    void show(std::vector<std::string> lines)
    {
        painted_ = false;
        platform::Form1& form1 = form1_.controls();
        form1.listav.set_lines(std::move(lines));
        form1.frame_stats.set_visible(false);
        form1.t_hint.set_visible(false);
        form1.panel_lista.set_visible(true);
        form1.listav.set_visible(true);
        form1.listav.set_focus();
    }

    /// Shows the statistics in the place of the list.
    void put_away()
    {
        platform::Form1& form1 = form1_.controls();
        form1.listav.set_visible(false);
        form1.panel_lista.set_visible(false);
        form1.frame_stats.set_visible(true);
        QCoreApplication::processEvents();
    }

    /// Scrolls to the end or to the start. Requires that the position changes, because nothing is painted otherwise.
    void scroll_to(bool end)
    {
        painted_ = false;
        QScrollBar& bar = *view_->verticalScrollBar();
        bar.setValue(end ? bar.maximum() : 0);
    }

    /// Processes events until the list has been painted, and then those that are pending.
    /// @throws common::Error if it is not painted within 10 seconds.
    void wait_until_painted() const
    {
        const QDeadlineTimer deadline(std::chrono::seconds(10));
        while (!painted_) {
            if (deadline.hasExpired())
                throw common::Error("The list was not painted.");
            QCoreApplication::processEvents();
        }
        QCoreApplication::processEvents();
    }

    [[nodiscard]] std::size_t line_count() const { return static_cast<std::size_t>(view_->model()->rowCount()); }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        painted_ = painted_ || event->type() == QEvent::Paint;
        return QObject::eventFilter(watched, event);
    }

private:
    platform::qt::QtGuard guard_;
    platform::qt::QtForm1 form1_{guard_};
    QAbstractItemView* view_ = form1_.widget().findChild<QAbstractItemView*>(QStringLiteral("listav"));
    bool painted_ = false;
};

/// A list and the window that shows it.
struct ShownList {
    ShownList(const WorkFolder& folder, int records) : engine(fresh_sample(folder, records)) { engine.open(); }

    void show(int records)
    {
        window.show(question_lines(engine, "order by q", true));
        window.wait_until_painted();
        if (window.line_count() != list_length(records))
            throw common::Error("the list is not as long as it can be");
    }

    Engine engine;
    ListWindow window;
};

Work shown(const WorkFolder& folder, int records)
{
    const auto list = std::make_shared<ShownList>(folder, records);
    return {.prepare = [list] { list->window.put_away(); }, .run = [list, records] { list->show(records); }};
}

Work scrolled(const WorkFolder& folder, int records)
{
    const auto list = std::make_shared<ShownList>(folder, records);
    list->show(records);
    const auto scroll_to = [list](bool end) {
        list->window.scroll_to(end);
        list->window.wait_until_painted();
    };
    bool at_start = true;
    return {.prepare =
                [scroll_to, at_start]() mutable {
                    if (!std::exchange(at_start, false))
                        scroll_to(false);
                },
            .run = [scroll_to] { scroll_to(true); }};
}

} // namespace

std::vector<Operation> window_operations()
{
    return {{.name = "list with answers, shown", .program = shown, .floor = nullptr, .needs_window = true},
            {.name = "scrolling it to its end", .program = scrolled, .floor = nullptr, .needs_window = true}};
}

} // namespace cuedrill::bench
