#include "fakes/course_builder.h"

#include "fakes/fake_clock.h"
#include "fakes/temp_folder.h"
#include "platform/icu/icu_text_compare.h"
#include "platform/sqlite/sqlite_database.h"
#include "store/schema.h"

#include <deque>
#include <ostream>
#include <utility>
#include <variant>

namespace cuedrill::fakes {

struct RealEngine::Adapters {
    platform::icu::IcuTextCompare text_compare;
    platform::sqlite::SqliteDatabase database{text_compare};
};

RealEngine::RealEngine()
    : adapters_(std::make_unique<Adapters>()), text_compare(adapters_->text_compare), database(adapters_->database)
{
}

RealEngine::~RealEngine() = default;

std::optional<ParamRow> CourseContents::param(const std::string& name) const
{
    for (const ParamRow& row : params) {
        if (row.param == name)
            return row;
    }
    return std::nullopt;
}

std::optional<double> CourseContents::number(const std::string& name) const
{
    const auto row = param(name);
    return row ? row->number_value : std::nullopt;
}

std::vector<std::string> CourseContents::param_names() const
{
    std::vector<std::string> names;
    for (const ParamRow& row : params)
        names.push_back(row.param);
    return names;
}

QuestionBuilder::QuestionBuilder(QaRow& row, common::DateTime now) : row_(&row), side_(&row.q_side), now_(now)
{
}

QuestionBuilder& QuestionBuilder::number(std::int64_t cnt)
{
    row_->cnt = cnt;
    return *this;
}

QuestionBuilder& QuestionBuilder::inverted()
{
    side_ = &row_->a_side;
    return *this;
}

QuestionBuilder& QuestionBuilder::level(std::int64_t level)
{
    side_->successes = level;
    return *this;
}

QuestionBuilder& QuestionBuilder::attempts(std::int64_t attempts)
{
    side_->attempts = attempts;
    return *this;
}

QuestionBuilder& QuestionBuilder::fails(std::int64_t fails)
{
    side_->fails = fails;
    return *this;
}

QuestionBuilder& QuestionBuilder::tested_ago(std::chrono::seconds time)
{
    side_->date_last_test = before(time);
    return shown_ago(time);
}

QuestionBuilder& QuestionBuilder::shown_ago(std::chrono::seconds time)
{
    side_->date_last_show = before(time);
    return *this;
}

QuestionBuilder& QuestionBuilder::never_shown()
{
    side_->date_last_show.reset();
    return *this;
}

common::DateTime QuestionBuilder::before(std::chrono::seconds time) const
{
    return common::DateTime::from_seconds(now_.seconds() - time.count());
}

struct CourseBuilder::Rows {
    std::deque<QaRow> qa; // never moves its elements, so the builders may keep pointers to them
    std::vector<ParamRow> params;
};

CourseBuilder::CourseBuilder() : CourseBuilder(FakeClock().time)
{
}

CourseBuilder::CourseBuilder(common::DateTime now) : now_(now), rows_(std::make_unique<Rows>())
{
}

CourseBuilder::CourseBuilder(CourseBuilder&& other) noexcept = default;

CourseBuilder& CourseBuilder::operator=(CourseBuilder&& other) noexcept = default;

CourseBuilder::~CourseBuilder() = default;

QuestionBuilder CourseBuilder::question(std::string q, std::string a)
{
    return {rows_->qa.emplace_back(QaRow{.q = std::move(q), .a = std::move(a)}), now_};
}

CourseBuilder& CourseBuilder::number_param(std::string name, std::optional<double> value)
{
    rows_->params.push_back({.param = std::move(name), .number_value = value});
    return *this;
}

CourseBuilder& CourseBuilder::text_param(std::string name, std::optional<std::string> value)
{
    rows_->params.push_back({.param = std::move(name), .string_value = std::move(value)});
    return *this;
}

CourseBuilder& CourseBuilder::date_param(std::string name, std::optional<common::DateTime> value)
{
    rows_->params.push_back({.param = std::move(name), .date_value = value});
    return *this;
}

namespace {

platform::Value value_of(const std::optional<common::DateTime>& date)
{
    return date ? platform::Value(date->day_number()) : platform::Value();
}

template <class Stored>
platform::Value value_of(const std::optional<Stored>& value)
{
    return value ? platform::Value(*value) : platform::Value();
}

void write_qa(platform::Database& database, const std::deque<QaRow>& rows)
{
    for (const QaRow& row : rows)
        database.execute("Insert into qa (cnt, q, a, q_attempts, a_attempts, q_fails, a_fails, q_successes, "
                         "a_successes, q_date_last_test, a_date_last_test, q_date_last_show, a_date_last_show) "
                         "values (?1, ?2, ?3, ?4, ?5, ?6, ?7, ?8, ?9, ?10, ?11, ?12, ?13)",
                         {row.cnt == 0 ? platform::Value() : platform::Value(row.cnt), row.q, row.a,
                          value_of(row.q_side.attempts), value_of(row.a_side.attempts), value_of(row.q_side.fails),
                          value_of(row.a_side.fails), value_of(row.q_side.successes), value_of(row.a_side.successes),
                          value_of(row.q_side.date_last_test), value_of(row.a_side.date_last_test),
                          value_of(row.q_side.date_last_show), value_of(row.a_side.date_last_show)});
}

void write_params(platform::Database& database, const std::vector<ParamRow>& rows)
{
    for (const ParamRow& row : rows)
        database.execute("Insert into params (param, date_value, string_value, number_value) values (?1, ?2, ?3, ?4)",
                         {row.param, value_of(row.date_value), value_of(row.string_value), value_of(row.number_value)});
}

} // namespace

std::string CourseBuilder::write(const TempFolder& folder, const std::string& name) const
{
    RealEngine engine;
    const std::string path = folder.file(name);
    store::create_course_db(engine.database, path);
    platform::Transaction transaction(engine.database);
    write_qa(engine.database, rows_->qa);
    write_params(engine.database, rows_->params);
    transaction.commit();
    return path;
}

namespace {

template <class Stored>
std::optional<Stored> optional_of(const platform::Value& value)
{
    if (std::holds_alternative<std::monostate>(value))
        return std::nullopt;
    return std::get<Stored>(value);
}

std::optional<common::DateTime> date_of(const platform::Value& value)
{
    const auto days = optional_of<double>(value);
    return days ? std::optional(common::DateTime::from_day_number(*days)) : std::nullopt;
}

SideRow side_of(const platform::Recordset& rows, const std::string& side)
{
    return {.attempts = optional_of<std::int64_t>(rows.field(side + "_attempts")),
            .fails = optional_of<std::int64_t>(rows.field(side + "_fails")),
            .successes = optional_of<std::int64_t>(rows.field(side + "_successes")),
            .date_last_test = date_of(rows.field(side + "_date_last_test")),
            .date_last_show = date_of(rows.field(side + "_date_last_show"))};
}

void print_date(const std::optional<common::DateTime>& date, std::ostream& out)
{
    out << (date ? common::format_date_literal(*date) : "null");
}

} // namespace

CourseContents contents_of(platform::Database& database)
{
    CourseContents contents;
    const auto qa = database.open_recordset("Select * from qa order by cnt");
    for (; !qa->eof(); qa->move_next())
        contents.qa.push_back({.cnt = std::get<std::int64_t>(qa->field("cnt")),
                               .q = optional_of<std::string>(qa->field("q")).value_or(""),
                               .a = optional_of<std::string>(qa->field("a")).value_or(""),
                               .q_side = side_of(*qa, "q"),
                               .a_side = side_of(*qa, "a")});
    const auto params = database.open_recordset("Select * from params order by rowid");
    for (; !params->eof(); params->move_next())
        contents.params.push_back({.param = std::get<std::string>(params->field("param")),
                                   .date_value = date_of(params->field("date_value")),
                                   .string_value = optional_of<std::string>(params->field("string_value")),
                                   .number_value = optional_of<double>(params->field("number_value"))});
    return contents;
}

CourseContents read_course(const std::string& path)
{
    RealEngine engine;
    engine.database.open(path, store::course_tables());
    return contents_of(engine.database);
}

void PrintTo(const SideRow& row, std::ostream* out)
{
    const auto number = [&](const char* name, const std::optional<std::int64_t>& value) {
        *out << name << (value ? std::to_string(*value) : "null");
    };
    number("attempts ", row.attempts);
    number(", fails ", row.fails);
    number(", level ", row.successes);
    *out << ", tested ";
    print_date(row.date_last_test, *out);
    *out << ", shown ";
    print_date(row.date_last_show, *out);
}

void PrintTo(const QaRow& row, std::ostream* out)
{
    *out << row.cnt << " \"" << row.q << "\" \"" << row.a << "\" q: ";
    PrintTo(row.q_side, out);
    *out << "; a: ";
    PrintTo(row.a_side, out);
}

void PrintTo(const ParamRow& row, std::ostream* out)
{
    *out << row.param << ": date ";
    print_date(row.date_value, *out);
    *out << ", text " << (row.string_value ? '"' + *row.string_value + '"' : "null") << ", number "
         << (row.number_value ? std::to_string(*row.number_value) : "null");
}

void PrintTo(const CourseContents& contents, std::ostream* out)
{
    for (const QaRow& row : contents.qa) {
        PrintTo(row, out);
        *out << '\n';
    }
    for (const ParamRow& row : contents.params) {
        PrintTo(row, out);
        *out << '\n';
    }
}

} // namespace cuedrill::fakes
