#include "bank/list_lines.h"
#include "bank/question_list.h"
#include "bank/record_search.h"
#include "bare_sqlite.h"
#include "bench_names.h"
#include "common/errors.h"
#include "engine.h"
#include "platform/icu/icu_text_compare.h"
#include "platform/qt/qt_form1.h"
#include "platform/qt/qt_guard.h"
#include "sample_course.h"

#include <QAbstractItemModel>
#include <QAbstractItemView>
#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QEvent>
#include <QMainWindow>
#include <QScrollBar>
#include <benchmark/benchmark.h>
#include <chrono>
#include <cstddef>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace cuedrill::bench {
namespace {

/// A part of a word that some hundred questions have.
constexpr const char* searched_text = "neka";

/// The list of all questions with their answers, as it is shown.
std::vector<std::string> question_lines(Engine& engine)
{
    std::optional<bank::QuestionList> questions =
        bank::read_questions(engine.course, "order by " + engine.course.Q_FIELD.text, true);
    if (!questions)
        throw common::Error("The course has no records.");
    bank::make_lines(*questions, engine.course, engine.text_compare);
    return std::move(questions->lines);
}

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

    /// Statistics stand in the place of the list again.
    void put_away()
    {
        platform::Form1& form1 = form1_.controls();
        form1.listav.set_visible(false);
        form1.panel_lista.set_visible(false);
        form1.frame_stats.set_visible(true);
        QCoreApplication::processEvents();
    }

    /// Requires that there is something to be scrolled to.
    void scroll_to(bool end)
    {
        painted_ = false;
        QScrollBar& bar = *view_->verticalScrollBar();
        bar.setValue(end ? bar.maximum() : 0);
    }

    /// Lets the window work until the list is painted and nothing is left to be done at once.
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

void list(benchmark::State& state)
{
    const WorkFolder folder;
    Engine engine(fresh_sample(folder));
    engine.open();
    for ([[maybe_unused]] auto iteration : state) {
        if (question_lines(engine).size() != bank::longest_list)
            state.SkipWithError("the list is not as long as it can be");
    }
}

void list_on_screen(benchmark::State& state)
{
    const WorkFolder folder;
    Engine engine(fresh_sample(folder));
    engine.open();
    ListWindow window;
    for ([[maybe_unused]] auto iteration : state) {
        state.PauseTiming();
        window.put_away();
        state.ResumeTiming();
        window.show(question_lines(engine));
        window.wait_until_painted();
        if (window.line_count() != bank::longest_list)
            state.SkipWithError("the list is not as long as it can be");
    }
}

void scrolling(benchmark::State& state)
{
    const WorkFolder folder;
    Engine engine(fresh_sample(folder));
    engine.open();
    ListWindow window;
    window.show(question_lines(engine));
    window.wait_until_painted();
    for ([[maybe_unused]] auto iteration : state) {
        window.scroll_to(true);
        window.wait_until_painted();
        state.PauseTiming();
        window.scroll_to(false);
        window.wait_until_painted();
        state.ResumeTiming();
    }
}

std::size_t records_to_be_found()
{
    std::size_t found = 0;
    for (int number = 1; number <= records; ++number)
        found += question_of(number).find(searched_text) != std::string::npos ? 1U : 0U;
    return found;
}

void search(benchmark::State& state)
{
    const WorkFolder folder;
    Engine engine(fresh_sample(folder));
    engine.open();
    const std::size_t expected = records_to_be_found();
    for ([[maybe_unused]] auto iteration : state) {
        const bank::FoundRecords found = bank::search(engine.course, engine.course.Q_FIELD, searched_text);
        if (found.list.lines().size() != expected)
            state.SkipWithError("not what is there was found");
    }
}

/// The columns of `qa` by their places.
enum QaColumn { column_q = 1, column_a = 2, column_q_successes = 7 };

void copy_text(sqlite3_stmt* row, int column, std::string& into)
{
    const auto* const bytes = static_cast<const char*>(sqlite3_column_blob(row, column));
    into.assign(bytes, static_cast<std::size_t>(sqlite3_column_bytes(row, column)));
}

/// Steps through the rows of a query up to one behind `most`, and copies question, answer and level of each.
/// @return how many were copied.
std::size_t read_rows(BareSqlite& sqlite, sqlite3_stmt* rows, std::size_t most)
{
    std::string question;
    std::string answer;
    std::size_t copied = 0;
    for (; sqlite3_step(rows) == SQLITE_ROW && copied < most; ++copied) {
        copy_text(rows, column_q, question);
        copy_text(rows, column_a, answer);
        int level = sqlite3_column_int(rows, column_q_successes);
        benchmark::DoNotOptimize(question.data());
        benchmark::DoNotOptimize(answer.data());
        benchmark::DoNotOptimize(level);
    }
    sqlite.check(sqlite3_reset(rows));
    return copied;
}

void reading_floor(benchmark::State& state, const std::string& sql, std::size_t expected)
{
    const WorkFolder folder;
    const platform::icu::IcuTextCompare text_compare;
    BareSqlite sqlite(fresh_sample(folder), text_compare);
    sqlite3_stmt* const rows = sqlite.prepare(sql);
    for ([[maybe_unused]] auto iteration : state) {
        if (read_rows(sqlite, rows, bank::longest_list) != expected)
            state.SkipWithError("not all rows were read");
    }
    sqlite3_finalize(rows);
}

void list_floor(benchmark::State& state)
{
    reading_floor(state, "Select * from qa order by q", bank::longest_list);
}

void search_floor(benchmark::State& state)
{
    reading_floor(state, std::string("Select * from qa where q like '%") + searched_text + "%' order by q",
                  records_to_be_found());
}

} // namespace

void register_list_benchmarks()
{
    const auto add = [](const std::string& name, auto function) {
        benchmark::RegisterBenchmark(name.c_str(), function)->Unit(benchmark::kMillisecond)->UseRealTime();
    };
    const std::string built = "list of 10000 lines with answers";
    const std::string shown = built + ", shown";
    const std::string found = "searching 30000 records";
    add(program_name(built), list);
    add(floor_name(built), list_floor);
    add(program_name(shown), list_on_screen);
    add(floor_name(shown), list_floor);
    add(program_name("scrolling such a list to its end"), scrolling);
    add(program_name(found), search);
    add(floor_name(found), search_floor);
}

} // namespace cuedrill::bench
