#include "store/course_params.h"

#include "common/text.h"
#include "store/course_transaction.h"
#include "store/schema.h"

#include <cmath>
#include <optional>
#include <string>
#include <utility>

namespace cuedrill::store {
namespace {

using platform::TableCursor;
using platform::Value;

constexpr common::Int16 default_target_level = 5;

/// The column of the row `key`; nothing when there is no such row.
std::optional<Value> read_value(TableCursor& params_recordset, const std::string& key, const std::string& column)
{
    params_recordset.seek(key);
    if (params_recordset.no_match())
        return std::nullopt;
    return params_recordset.field(column);
}

void read_option(TableCursor& params_recordset, const std::string& key, bool& option)
{
    if (const auto value = read_value(params_recordset, key, "number_value"))
        option = nz(*value) == 1;
}

/// Gives the column of the row `key` its value; a missing row is added with the name `new_key`.
void store_value(TableCursor& params_recordset, const std::string& key, const std::string& new_key,
                 const std::string& column, Value value)
{
    params_recordset.seek(key);
    if (params_recordset.no_match()) {
        params_recordset.add_new();
        params_recordset.set("param", new_key);
    } else {
        params_recordset.edit();
    }
    params_recordset.set(column, std::move(value));
    params_recordset.update();
}

void store_value(TableCursor& params_recordset, const std::string& key, const std::string& column, Value value)
{
    store_value(params_recordset, key, key, column, std::move(value));
}

void store_option(TableCursor& params_recordset, const std::string& key, bool option)
{
    store_value(params_recordset, key, "number_value", option ? 1.0 : 0.0);
}

std::unique_ptr<TableCursor> open_params(Course& course)
{
    auto params_recordset = course.database().open_table("params");
    params_recordset->set_index("PrimaryKey");
    return params_recordset;
}

} // namespace

void CourseParamsStore::read_params()
{
    const common::DateTime now = m_clock.now();
    m_unstored.clear();
    const auto params_recordset = open_params(m_course);
    CourseParams& params = m_course.params;
    params.course_title.clear();
    params.invert = params.list_mode = params.random_mode = false;
    params.time_ever = params.time_today = 0;
    params.last_date = now.plus_days(-1);
    params.score_today = 0;

    const auto title = read_value(*params_recordset, "course_title", "string_value");
    params.course_title =
        title && !std::holds_alternative<std::monostate>(*title) ? stored_text(*title) : default_title();
    read_option(*params_recordset, "invert", params.invert);
    read_option(*params_recordset, "random_mode", params.random_mode);
    read_option(*params_recordset, "list_mode", params.list_mode);
    read_option(*params_recordset, "always_type", params.always_type);
    read_target_level(*params_recordset);
    read_counters(*params_recordset, now);
    const auto font = read_value(*params_recordset, "font", "string_value");
    params.font = font ? stored_text(*font) : std::string();
}

void CourseParamsStore::read_target_level(TableCursor& params_recordset)
{
    CourseParams& params = m_course.params;
    double level = params.target_level;
    const auto value = read_value(params_recordset, "target_level", "number_value");
    if (value && !std::holds_alternative<std::monostate>(*value))
        level = std::trunc(nz(*value));
    if (level >= lowest_target_level && level <= highest_target_level) {
        params.target_level = common::to_int16(level, "target level");
    } else {
        params.target_level = default_target_level;
        store_target_level();
    }
}

void CourseParamsStore::store_target_level()
{
    try {
        write_params();
    } catch (const platform::DatabaseError& error) {
        // A course can be looked at without room on the disk.
        if (error.kind() != platform::DatabaseErrorKind::full)
            throw;
        m_unstored = error.what();
    }
}

void CourseParamsStore::read_counters(TableCursor& params_recordset, common::DateTime now)
{
    CourseParams& params = m_course.params;
    if (const auto ever = read_value(params_recordset, "time_ever", "number_value"))
        params.time_ever = nz(*ever);
    if (const auto date = read_value(params_recordset, "last_date", "date_value")) {
        if (const auto last_date = stored_date(*date))
            params.last_date = *last_date;
    }
    const bool same_day = params.last_date.date_only() == now.date_only();
    const auto today = read_value(params_recordset, "time_today", "number_value");
    if (today && same_day)
        params.time_today = nz(*today);
    const auto score = read_value(params_recordset, "score_today", "number_value");
    if (score && same_day)
        params.score_today = nz_int16(*score, "score of the day");
}

void CourseParamsStore::write_params()
{
    store_settings(m_course.params);
}

void CourseParamsStore::change_params(const CourseParams& changed)
{
    store_settings(changed);
    // The counters may have become known meanwhile.
    CourseParams params = changed;
    params.time_ever = m_course.params.time_ever;
    params.time_today = m_course.params.time_today;
    params.last_date = m_course.params.last_date;
    params.score_today = m_course.params.score_today;
    m_course.params = std::move(params);
}

void CourseParamsStore::store_settings(const CourseParams& params)
{
    CourseTransaction transaction(m_course);
    const auto params_recordset = open_params(m_course);
    const std::string title = stored_title(params);
    store_option(*params_recordset, "random_mode", params.random_mode);
    store_value(*params_recordset, "course_title", "string_value", title);
    store_option(*params_recordset, "invert", params.invert);
    store_option(*params_recordset, "list_mode", params.list_mode);
    store_option(*params_recordset, "always_type", params.always_type);
    store_value(*params_recordset, "target_level", "number_value", static_cast<double>(params.target_level));
    // Where nobody can tell, the settings in memory stay; the next change stores all six of them.
    transaction.commit({.is_stored = [this, params] { return holds_settings(params); }});
}

bool CourseParamsStore::holds_settings(const CourseParams& params) const
{
    const auto params_recordset = open_params(m_course);
    const auto holds = [&](const std::string& key, const std::string& column, const Value& value) {
        return read_value(*params_recordset, key, column) == value;
    };
    const auto holds_option = [&](const std::string& key, bool option) {
        return holds(key, "number_value", option ? 1.0 : 0.0);
    };
    return holds_option("random_mode", params.random_mode) &&
           holds("course_title", "string_value", stored_title(params)) && holds_option("invert", params.invert) &&
           holds_option("list_mode", params.list_mode) && holds_option("always_type", params.always_type) &&
           holds("target_level", "number_value", static_cast<double>(params.target_level));
}

void CourseParamsStore::save_counters(const CourseParams& counters, common::DateTime now)
{
    CourseTransaction transaction(m_course);
    const auto params_recordset = open_params(m_course);
    store_value(*params_recordset, "time_ever", "number_value", time_ever(counters, now));
    // Courses carry these two keys in capitals since their first rows; look-ups do not mind the case.
    store_value(*params_recordset, "time_today", "time_TODAY", "number_value", time_today(counters, now));
    store_value(*params_recordset, "score_today", "score_TODAY", "number_value",
                static_cast<double>(counters.score_today));
    store_value(*params_recordset, "last_date", "date_value", now.day_number());
    transaction.commit({.is_stored = [this, counters, now] { return holds_counters(counters, now); }});
}

bool CourseParamsStore::holds_counters(const CourseParams& counters, common::DateTime now) const
{
    const auto params_recordset = open_params(m_course);
    const auto holds = [&](const std::string& key, const std::string& column, double value) {
        return read_value(*params_recordset, key, column) == Value(value);
    };
    return holds("time_ever", "number_value", time_ever(counters, now)) &&
           holds("time_today", "number_value", time_today(counters, now)) &&
           holds("score_today", "number_value", static_cast<double>(counters.score_today)) &&
           holds("last_date", "date_value", now.day_number());
}

double CourseParamsStore::time_today(const CourseParams& counters, common::DateTime now) const
{
    const double before = counters.last_date.date_only() == now.date_only() ? counters.time_today : 0;
    return before + m_course.elapsed_seconds(now);
}

double CourseParamsStore::time_ever(const CourseParams& counters, common::DateTime now) const
{
    return counters.time_ever + m_course.elapsed_seconds(now);
}

std::string CourseParamsStore::stored_title(const CourseParams& params) const
{
    const std::string title = params.course_title.empty() ? default_title() : params.course_title;
    return std::string(common::first_code_points(title, longest_text));
}

std::string CourseParamsStore::default_title() const
{
    return "Course " + m_course.course_name;
}

} // namespace cuedrill::store
