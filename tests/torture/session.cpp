#include "torture/session.h"

#include "keep/removed_entry.h"
#include "scheduler/verdict.h"
#include "store/schema.h"
#include "torture/effort.h"

#include <array>
#include <chrono>
#include <filesystem>
#include <sstream>
#include <variant>

namespace cuedrill::torture {
namespace {

/// Texts of all lengths that a course takes, with letters of more than one byte, some of them equal but for their case.
std::string text_of(std::uint64_t number, const char* what)
{
    std::string text = std::string(number % 2 == 0 ? "Ä" : "ä") + what + std::to_string(number % 997);
    for (std::uint64_t i = 0; i < number % 60; ++i)
        text += "-éx";
    return text;
}

void add_value(std::ostream& out, const platform::Value& value)
{
    if (const auto* const whole = std::get_if<std::int64_t>(&value))
        out << *whole;
    else if (const auto* const number = std::get_if<double>(&value))
        out << std::hexfloat << *number;
    else if (const auto* const text = std::get_if<std::string>(&value))
        out << '"' << *text << '"';
    else
        out << "null";
    out << ' ';
}

} // namespace

const char* name_of(Operation operation)
{
    static constexpr std::array<const char*, number_of_operations> names{
        "know",         "know_not", "undo",     "show",      "insert", "change",  "remove",   "reset_all",
        "import_group", "invert",   "settings", "work_time", "reopen", "reorder", "make_aids"};
    return names[static_cast<std::size_t>(operation)];
}

const platform::icu::IcuTextCompare& TwoOrders::order()
{
    static const platform::icu::IcuTextCompare order;
    return order;
}

int TwoOrders::compare(std::string_view a, std::string_view b) const
{
    const int result = order().compare(a, b);
    return turned ? -result : result;
}

bool KeptMarks::is_noted(const std::string& path, const std::string& mark) const noexcept
{
    const auto found = marks_.find(path);
    return found != marks_.end() && found->second == mark;
}

Session::Session(const std::string& path)
    : removed_(real_files_, std::filesystem::path(path).parent_path().string()),
      database_(order_, std::chrono::milliseconds(0), &marks_), course_(database_), params_(course_, clock_),
      bank_(course_, order_)
{
    bank_.before_loss = [this](bank::Loss loss, const store::QaTexts& texts) { keep_lost(loss, texts); };
    course_.db_path = path;
    course_.course_name = "course";
    dead_times_.init_dead_time_array();
}

void Session::keep_lost(bank::Loss loss, const store::QaTexts& texts)
{
    const auto reason = loss == bank::Loss::deleted ? keep::Reason::deleted : keep::Reason::replaced;
    const keep::RemovedTexts lost{.when = clock_.now(), .course = course_.db_path, .reason = reason, .texts = texts};
    if (!is_broken("lose_removed"))
        static_cast<void>(removed_.append(keep::entry_of(lost, order_)));
}

void Session::create()
{
    store::create_course_db(database_, course_.db_path);
    database_.close();
}

void Session::open()
{
    course_.apri_db();
    try {
        begin_use();
    } catch (...) {
        course_.close();
        throw;
    }
}

void Session::begin_use()
{
    params_.read_params();
    course_.set_side_fields();
    course_.record_count = course_.count_records();
    course_.start_counting(clock_.now());
    database_.finish_check();
}

void Session::close() noexcept
{
    course_.close();
}

void Session::let_time_pass(const Step& step)
{
    constexpr std::uint64_t most_seconds = 90000;
    clock_.advance_seconds(static_cast<std::int64_t>(1 + step.number % most_seconds));
}

void Session::perform(const Step& step)
{
    let_time_pass(step);
    carry_out(step);
}

void Session::carry_out(const Step& step)
{
    if (!course_.is_open())
        open();
    const std::optional<common::Int16> record = some_record(step.number);
    switch (step.operation) {
    case Operation::know:
    case Operation::know_not:
        if (record)
            scheduler::judge(course_, dead_times_, *record, step.operation == Operation::know, clock_.now());
        return;
    case Operation::undo:
        scheduler::undo_last_verdict(course_);
        course_.last_verdict.reset();
        return;
    case Operation::show:
        if (record)
            scheduler::stamp_last_show(course_, *record, clock_.now());
        return;
    case Operation::insert:
        save({}, step.number);
        return;
    case Operation::change:
        if (record) {
            save(record, step.number);
            course_.forget_last_verdict_on(*record);
        }
        return;
    case Operation::remove:
        if (record) {
            bank_.delete_record(*record);
            course_.forget_last_verdict_on(*record);
        }
        return;
    case Operation::reset_all:
        scheduler::reset_all(course_, clock_.now());
        return;
    case Operation::import_group:
        import_group(step.number);
        return;
    case Operation::invert:
        change_settings(step.number, true);
        return;
    case Operation::settings:
        change_settings(step.number, false);
        return;
    case Operation::work_time:
        params_.save_work_time(clock_.now());
        return;
    case Operation::reopen:
        reopen();
        return;
    case Operation::reorder:
        close();
        order_.turned = !order_.turned;
        reopen();
        return;
    case Operation::make_aids:
        database_.execute("Drop index if exists qa_q_due");
        database_.execute("Drop index if exists qa_a_due");
        reopen();
        return;
    }
}

void Session::reopen()
{
    close();
    open();
}

/// Saves a new record, or new texts of a record. A question that another record has is refused; that is a step, too.
void Session::save(std::optional<common::Int16> changed, std::uint64_t number)
{
    static_cast<void>(bank_.save({.question = text_of(number, changed ? "changed " : "question "),
                                  .answer = text_of(number / 7, "answer "),
                                  .changed = changed,
                                  .question_before = {},
                                  .answer_before = {}},
                                 {}));
}

void Session::change_settings(std::uint64_t number, bool invert)
{
    params_.change_params([&](store::CourseParams& changed) {
        if (invert) {
            changed.invert = !changed.invert;
        } else {
            changed.course_title = text_of(number, "Course ");
            changed.list_mode = number % 3 == 0;
            changed.random_mode = number % 5 == 0;
            changed.target_level = static_cast<common::Int16>(1 + number % 10);
        }
    });
}

void Session::import_group(std::uint64_t number)
{
    constexpr int records = 10;
    constexpr int steps_before_the_first_record = 3; // the file is read twice: to its end, and its first piece
    constexpr std::chrono::seconds step_of_a_group{4};
    try {
        if (!importer_) {
            std::string& text = files_.files["questions.txt"];
            text.clear();
            for (std::uint64_t i = 0; i < records; ++i)
                text += "@Q@ " + text_of(number + i, "imported ") + " @A@ " + text_of(number / 3 + i, "answer ") + "\n";
            importer_.emplace(course_, files_, clock_, order_, "questions.txt");
            for (int i = 0; i < steps_before_the_first_record; ++i)
                importer_->step(std::chrono::milliseconds(0));
        }
        importer_->step(step_of_a_group);
        progress_ = importer_->progress();
    } catch (...) {
        progress_ = importer_->progress();
        importer_.reset();
        throw;
    }
    if (progress_.finished)
        importer_.reset();
}

std::optional<common::Int16> Session::some_record(std::uint64_t number)
{
    const platform::Rows rows = database_.query("Select cnt from qa order by cnt");
    if (rows.empty())
        return std::nullopt;
    return store::nz_int16(rows[number % rows.size()].field(0), "record number");
}

std::string Session::dump()
{
    return dump_of(database_);
}

std::string dump_of(platform::Database& database)
{
    std::ostringstream out;
    for (const char* const sql : {"Select * from qa order by cnt", "Select * from params order by rowid"}) {
        for (const platform::Row row : database.query(sql)) {
            for (const platform::Value& value : row.values())
                add_value(out, value);
            out << '\n';
        }
        out << '\n';
    }
    return out.str();
}

} // namespace cuedrill::torture
