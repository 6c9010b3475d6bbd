#include "store/course_params.h"

#include "common/text.h"
#include "store/course_transaction.h"
#include "store/schema.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <string>

namespace cuedrill::store {
namespace {

using platform::Value;

constexpr common::Int16 default_target_level = 5;

/// The columns of `params` that hold a value; each key uses one of them.
constexpr const char* number_column = "number_value";
constexpr const char* text_column = "string_value";
constexpr const char* date_column = "date_value";

/// A column of the row with this key, ignoring case; std::nullopt if there is no such row.
std::optional<Value> read_value(Course& course, const std::string& key, const std::string& column)
{
    const auto rows = course.database().query("Select " + column + " from params where param=?1", {key});
    if (rows.empty())
        return std::nullopt;
    return rows[0].field(0);
}

void read_option(Course& course, const std::string& key, bool& option)
{
    if (const auto value = read_value(course, key, number_column))
        option = nz(*value) == 1;
}

/// Stores a value in a column of the row with this key. Adds the row if it is missing; an existing key keeps its case.
void store_value(Course& course, const std::string& key, const std::string& column, const Value& value)
{
    course.database().execute("Insert into params (param, " + column +
                                  ") values (?1, ?2) on conflict (param) do update set " + column + "=excluded." +
                                  column,
                              {key, value});
}

void store_values(Course& course, const std::vector<StoredParam>& params)
{
    for (const StoredParam& param : params)
        store_value(course, param.key, param.column, param.value);
}

bool holds_values(Course& course, const std::vector<StoredParam>& params)
{
    return std::all_of(params.begin(), params.end(), [&](const StoredParam& param) {
        return read_value(course, param.key, param.column) == param.value;
    });
}

Value option_value(bool option)
{
    return option ? 1.0 : 0.0;
}

double time_today(const Course& course, const CourseParams& counters, common::DateTime now)
{
    const double before = counters.last_date.date_only() == now.date_only() ? counters.time_today : 0;
    return before + course.elapsed_seconds(now);
}

double time_ever(const Course& course, const CourseParams& counters, common::DateTime now)
{
    return counters.time_ever + course.elapsed_seconds(now);
}

std::vector<StoredParam> counters_of(const Course& course, const CourseParams& counters, common::DateTime now)
{
    // New rows get the keys of the day in capitals, as in existing courses.
    return {{"time_ever", number_column, time_ever(course, counters, now)},
            {"time_TODAY", number_column, time_today(course, counters, now)},
            {"score_TODAY", number_column, static_cast<double>(counters.score_today)},
            {"last_date", date_column, now.day_number()}};
}

} // namespace

void write_counters(Course& course, const CourseParams& counters, common::DateTime now)
{
    store_values(course, counters_of(course, counters, now));
}

bool holds_counters(Course& course, const CourseParams& counters, common::DateTime now)
{
    return holds_values(course, counters_of(course, counters, now));
}

void CourseParamsStore::read_params()
{
    const common::DateTime now = clock_.now();
    unstored_.clear();
    CourseParams& params = course_.params;
    params.course_title.clear();
    params.invert = params.list_mode = params.random_mode = false;
    params.time_ever = params.time_today = 0;
    params.last_date = now.plus_days(-1);
    params.score_today = 0;

    const auto title = read_value(course_, "course_title", text_column);
    params.course_title =
        title && !std::holds_alternative<std::monostate>(*title) ? stored_text(*title) : default_title();
    read_option(course_, "invert", params.invert);
    read_option(course_, "random_mode", params.random_mode);
    read_option(course_, "list_mode", params.list_mode);
    read_option(course_, "always_type", params.always_type);
    read_target_level();
    read_counters(now);
    const auto font = read_value(course_, "font", text_column);
    params.font = font ? stored_text(*font) : std::string();
}

void CourseParamsStore::read_target_level()
{
    CourseParams& params = course_.params;
    double level = params.target_level;
    const auto value = read_value(course_, "target_level", number_column);
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
        // With a full disk the course can still be read.
        if (error.kind() != platform::DatabaseErrorKind::full)
            throw;
        unstored_ = error.what();
    }
}

void CourseParamsStore::read_counters(common::DateTime now)
{
    CourseParams& params = course_.params;
    if (const auto ever = read_value(course_, "time_ever", number_column))
        params.time_ever = nz(*ever);
    if (const auto date = read_value(course_, "last_date", date_column)) {
        if (const auto last_date = stored_date(*date))
            params.last_date = *last_date;
    }
    const bool same_day = params.last_date.date_only() == now.date_only();
    const auto today = read_value(course_, "time_today", number_column);
    if (today && same_day)
        params.time_today = nz(*today);
    const auto score = read_value(course_, "score_today", number_column);
    if (score && same_day)
        params.score_today = nz_int16(*score, "score of the day");
}

void CourseParamsStore::write_params()
{
    change_params([](CourseParams&) {});
}

void CourseParamsStore::change_params(const std::function<void(CourseParams&)>& edit)
{
    CourseTransaction transaction(course_);
    CourseParams changed = course_.params;
    edit(changed);
    const std::vector<StoredParam> settings = settings_of(changed);
    store_values(course_, settings);
    const auto take_over = [this, changed] { adopt(changed); };
    transaction.commit({.is_stored = [this, settings] { return holds_values(course_, settings); },
                        .when_stored_after_all = take_over});
    take_over();
}

/// Makes the six settings those of the course. Its counters stay.
void CourseParamsStore::adopt(const CourseParams& settings)
{
    CourseParams& params = course_.params;
    if (settings.target_level > params.target_level)
        course_.all_passed_announced = false;
    const bool turned = settings.invert != params.invert;
    params.course_title = settings.course_title;
    params.invert = settings.invert;
    params.random_mode = settings.random_mode;
    params.list_mode = settings.list_mode;
    params.always_type = settings.always_type;
    params.target_level = settings.target_level;
    if (turned) {
        course_.set_side_fields();
        // The last verdict belongs to the other direction.
        course_.last_verdict.reset();
    }
}

std::vector<StoredParam> CourseParamsStore::settings_of(const CourseParams& params) const
{
    return {{"random_mode", number_column, option_value(params.random_mode)},
            {"course_title", text_column, stored_title(params)},
            {"invert", number_column, option_value(params.invert)},
            {"list_mode", number_column, option_value(params.list_mode)},
            {"always_type", number_column, option_value(params.always_type)},
            {"target_level", number_column, static_cast<double>(params.target_level)}};
}

void CourseParamsStore::change_font(const std::string& font)
{
    CourseTransaction transaction(course_);
    const std::vector<StoredParam> changed{{"font", text_column, font}};
    store_values(course_, changed);
    const auto take_over = [this, font] { course_.params.font = font; };
    transaction.commit(
        {.is_stored = [this, changed] { return holds_values(course_, changed); }, .when_stored_after_all = take_over});
    take_over();
}

void CourseParamsStore::save_work_time(common::DateTime now)
{
    CourseTransaction transaction(course_);
    write_counters(course_, course_.params, now);
    transaction.commit(
        {.is_stored = [this, counters = course_.params, now] { return holds_counters(course_, counters, now); }});
}

double CourseParamsStore::time_today(common::DateTime now) const
{
    return store::time_today(course_, course_.params, now);
}

double CourseParamsStore::time_ever(common::DateTime now) const
{
    return store::time_ever(course_, course_.params, now);
}

std::string CourseParamsStore::stored_title(const CourseParams& params) const
{
    const std::string title = params.course_title.empty() ? default_title() : params.course_title;
    return std::string(common::first_code_points(title, longest_text));
}

std::string CourseParamsStore::default_title() const
{
    return "Course " + course_.course_name;
}

} // namespace cuedrill::store
