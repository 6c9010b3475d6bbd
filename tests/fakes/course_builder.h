#pragma once

#include "common/date_time.h"
#include "fakes/fake_clock.h"
#include "fakes/temp_folder.h"
#include "platform/icu/icu_text_compare.h"
#include "platform/sqlite/sqlite_database.h"
#include "store/schema.h"

#include <chrono>
#include <cstdint>
#include <deque>
#include <optional>
#include <ostream>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace cuedrill::fakes {

/// The database that the program runs on.
struct RealEngine {
    platform::icu::IcuTextCompare text_compare;
    platform::sqlite::SqliteDatabase database{text_compare};
};

/// The history of a record in one direction; what is missing is null.
struct SideRow {
    std::optional<std::int64_t> attempts{};
    std::optional<std::int64_t> fails{};
    std::optional<std::int64_t> successes{};
    std::optional<common::DateTime> date_last_test{};
    std::optional<common::DateTime> date_last_show{};

    friend bool operator==(const SideRow&, const SideRow&) = default;
};

/// A row of `qa`. A null text reads as empty.
struct QaRow {
    std::int64_t cnt = 0; ///< 0 in a row still to be written: numbered by the engine
    std::string q{};
    std::string a{};
    SideRow q_side{};
    SideRow a_side{};

    friend bool operator==(const QaRow&, const QaRow&) = default;
};

/// A row of `params`; what is missing is null.
struct ParamRow {
    std::string param{};
    std::optional<common::DateTime> date_value{};
    std::optional<std::string> string_value{};
    std::optional<double> number_value{};

    friend bool operator==(const ParamRow&, const ParamRow&) = default;
};

/// All that a course file holds: `qa` in the order of the numbers, `params` in the order of insertion.
struct CourseContents {
    std::vector<QaRow> qa{};
    std::vector<ParamRow> params{};

    friend bool operator==(const CourseContents&, const CourseContents&) = default;

    [[nodiscard]] std::optional<ParamRow> param(const std::string& name) const
    {
        for (const ParamRow& row : params) {
            if (row.param == name)
                return row;
        }
        return std::nullopt;
    }
    /// The number of the parameter of exactly that name; nothing without the row, or when it is null.
    [[nodiscard]] std::optional<double> number(const std::string& name) const
    {
        const auto row = param(name);
        return row ? row->number_value : std::nullopt;
    }
    [[nodiscard]] std::vector<std::string> param_names() const
    {
        std::vector<std::string> names;
        for (const ParamRow& row : params)
            names.push_back(row.param);
        return names;
    }
};

/// Describes one record: texts without a history, until told otherwise. What is said about the history is about the
/// direction in which `q` is asked, after `inverted()` about the other one.
class QuestionBuilder {
public:
    QuestionBuilder(QaRow& row, common::DateTime now) : m_row(&row), m_side(&row.q_side), m_now(now) {}

    QuestionBuilder& number(std::int64_t cnt)
    {
        m_row->cnt = cnt;
        return *this;
    }
    QuestionBuilder& inverted()
    {
        m_side = &m_row->a_side;
        return *this;
    }
    QuestionBuilder& level(std::int64_t level)
    {
        m_side->successes = level;
        return *this;
    }
    QuestionBuilder& attempts(std::int64_t attempts)
    {
        m_side->attempts = attempts;
        return *this;
    }
    QuestionBuilder& fails(std::int64_t fails)
    {
        m_side->fails = fails;
        return *this;
    }
    /// Tested, and so shown, that long before the builder's present.
    QuestionBuilder& tested_ago(std::chrono::seconds time)
    {
        m_side->date_last_test = before(time);
        return shown_ago(time);
    }
    QuestionBuilder& shown_ago(std::chrono::seconds time)
    {
        m_side->date_last_show = before(time);
        return *this;
    }
    QuestionBuilder& never_shown()
    {
        m_side->date_last_show.reset();
        return *this;
    }

private:
    [[nodiscard]] common::DateTime before(std::chrono::seconds time) const
    {
        return common::DateTime::from_seconds(m_now.seconds() - time.count());
    }

    QaRow* m_row;
    SideRow* m_side;
    common::DateTime m_now;
};

/// Makes course files through the real engine: what is described is written by `write`, as often as wanted.
class CourseBuilder {
public:
    /// @param now the present, from which the times of tests and shows are counted back.
    explicit CourseBuilder(common::DateTime now = FakeClock().time) : m_now(now) {}

    /// One more record. The builder that is returned lives as long as this one.
    QuestionBuilder question(std::string q, std::string a = "answer")
    {
        return {m_rows.emplace_back(QaRow{.q = std::move(q), .a = std::move(a)}), m_now};
    }
    CourseBuilder& number_param(std::string name, std::optional<double> value)
    {
        m_params.push_back({.param = std::move(name), .number_value = value});
        return *this;
    }
    CourseBuilder& text_param(std::string name, std::optional<std::string> value)
    {
        m_params.push_back({.param = std::move(name), .string_value = std::move(value)});
        return *this;
    }
    CourseBuilder& date_param(std::string name, std::optional<common::DateTime> value)
    {
        m_params.push_back({.param = std::move(name), .date_value = value});
        return *this;
    }

    /// Writes the course as a new file of the folder, and gives its full path.
    [[nodiscard]] std::string write(const TempFolder& folder, const std::string& name = "course.crs") const
    {
        RealEngine engine;
        const std::string path = folder.file(name);
        store::create_course_db(engine.database, path);
        platform::Transaction transaction(engine.database);
        write_qa(engine.database);
        write_params(engine.database);
        transaction.commit();
        return path;
    }

private:
    void write_qa(platform::Database& database) const
    {
        const auto cursor = database.open_table("qa");
        cursor->set_index("PrimaryKey");
        for (const QaRow& row : m_rows) {
            if (row.cnt == 0) {
                cursor->add_new();
            } else {
                database.execute("Insert into qa (cnt) values (" + std::to_string(row.cnt) + ")");
                cursor->seek(row.cnt);
                cursor->edit();
            }
            cursor->set("q", row.q);
            cursor->set("a", row.a);
            write_side(*cursor, "q", row.q_side);
            write_side(*cursor, "a", row.a_side);
            cursor->update();
        }
    }

    static void write_side(platform::TableCursor& cursor, const std::string& side, const SideRow& row)
    {
        cursor.set(side + "_attempts", value_of(row.attempts));
        cursor.set(side + "_fails", value_of(row.fails));
        cursor.set(side + "_successes", value_of(row.successes));
        cursor.set(side + "_date_last_test", value_of(row.date_last_test));
        cursor.set(side + "_date_last_show", value_of(row.date_last_show));
    }

    void write_params(platform::Database& database) const
    {
        const auto cursor = database.open_table("params");
        for (const ParamRow& row : m_params) {
            cursor->add_new();
            cursor->set("param", row.param);
            cursor->set("date_value", value_of(row.date_value));
            cursor->set("string_value", value_of(row.string_value));
            cursor->set("number_value", value_of(row.number_value));
            cursor->update();
        }
    }

    static platform::Value value_of(const std::optional<common::DateTime>& date)
    {
        return date ? platform::Value(date->day_number()) : platform::Value();
    }
    template <class Stored>
    static platform::Value value_of(const std::optional<Stored>& value)
    {
        return value ? platform::Value(*value) : platform::Value();
    }

    common::DateTime m_now;
    std::deque<QaRow> m_rows; // never moves its elements, so the builders may point to them
    std::vector<ParamRow> m_params;
};

namespace detail {

template <class Stored>
std::optional<Stored> optional_of(const platform::Value& value)
{
    if (std::holds_alternative<std::monostate>(value))
        return std::nullopt;
    return std::get<Stored>(value);
}

inline std::optional<common::DateTime> date_of(const platform::Value& value)
{
    const auto days = optional_of<double>(value);
    return days ? std::optional(common::DateTime::from_day_number(*days)) : std::nullopt;
}

inline SideRow side_of(const platform::Recordset& rows, const std::string& side)
{
    return {.attempts = optional_of<std::int64_t>(rows.field(side + "_attempts")),
            .fails = optional_of<std::int64_t>(rows.field(side + "_fails")),
            .successes = optional_of<std::int64_t>(rows.field(side + "_successes")),
            .date_last_test = date_of(rows.field(side + "_date_last_test")),
            .date_last_show = date_of(rows.field(side + "_date_last_show"))};
}

} // namespace detail

/// What the open database holds.
inline CourseContents contents_of(platform::Database& database)
{
    CourseContents contents;
    const auto qa = database.open_recordset("Select * from qa order by cnt");
    for (; !qa->eof(); qa->move_next())
        contents.qa.push_back({.cnt = std::get<std::int64_t>(qa->field("cnt")),
                               .q = detail::optional_of<std::string>(qa->field("q")).value_or(""),
                               .a = detail::optional_of<std::string>(qa->field("a")).value_or(""),
                               .q_side = detail::side_of(*qa, "q"),
                               .a_side = detail::side_of(*qa, "a")});
    const auto params = database.open_recordset("Select * from params order by rowid");
    for (; !params->eof(); params->move_next())
        contents.params.push_back({.param = std::get<std::string>(params->field("param")),
                                   .date_value = detail::date_of(params->field("date_value")),
                                   .string_value = detail::optional_of<std::string>(params->field("string_value")),
                                   .number_value = detail::optional_of<double>(params->field("number_value"))});
    return contents;
}

/// What the file holds, read through a connection of its own: what another program would see now.
inline CourseContents read_course(const std::string& path)
{
    RealEngine engine;
    engine.database.open(path, store::course_tables());
    return contents_of(engine.database);
}

// How Google Test shows the values that differ.

inline void print_date(const std::optional<common::DateTime>& date, std::ostream& out)
{
    out << (date ? common::format_date_literal(*date) : "null");
}

inline void PrintTo(const SideRow& row, std::ostream* out)
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

inline void PrintTo(const QaRow& row, std::ostream* out)
{
    *out << row.cnt << " \"" << row.q << "\" \"" << row.a << "\" q: ";
    PrintTo(row.q_side, out);
    *out << "; a: ";
    PrintTo(row.a_side, out);
}

inline void PrintTo(const ParamRow& row, std::ostream* out)
{
    *out << row.param << ": date ";
    print_date(row.date_value, *out);
    *out << ", text " << (row.string_value ? '"' + *row.string_value + '"' : "null") << ", number "
         << (row.number_value ? std::to_string(*row.number_value) : "null");
}

inline void PrintTo(const CourseContents& contents, std::ostream* out)
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
