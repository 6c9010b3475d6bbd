#include "keep/thinning.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>

namespace cuedrill::keep {
namespace {

constexpr std::int64_t seconds_of_day = 24 * 60 * 60;
constexpr std::int64_t age_of_all = 2 * seconds_of_day;
constexpr std::int64_t age_of_daily = 14 * seconds_of_day;
constexpr std::int64_t age_of_weekly = 61 * seconds_of_day;
constexpr std::int64_t age_of_monthly = 366 * seconds_of_day;

/// The days, weeks or months are numbered: one copy of each number stays.
struct Period {
    enum class Kind { day, week, month } kind;
    std::int64_t number;

    friend bool operator==(const Period&, const Period&) = default;
};

/// The period of which one copy stays; nothing for a copy that is too old for any.
std::optional<Period> period_of(common::DateTime time, std::int64_t age)
{
    if (age <= age_of_daily)
        return Period{Period::Kind::day, time.date_only().seconds() / seconds_of_day};
    if (age <= age_of_weekly) {
        // 1899-12-30 was a Saturday; weeks begin on Monday.
        constexpr std::int64_t days_from_monday = 5;
        return Period{Period::Kind::week, (time.date_only().seconds() / seconds_of_day + days_from_monday) / 7};
    }
    if (age <= age_of_monthly) {
        const common::CalendarFields fields = time.fields();
        return Period{Period::Kind::month, std::int64_t{fields.year} * 12 + fields.month};
    }
    return std::nullopt;
}

} // namespace

std::vector<common::DateTime> to_remove(std::vector<common::DateTime> times, common::DateTime now)
{
    std::sort(times.begin(), times.end(), std::greater<>());
    std::vector<common::DateTime> removed;
    std::optional<Period> last;
    for (std::size_t i = 0; i < times.size(); ++i) {
        const std::int64_t age = common::seconds_between(times[i], now);
        if (age <= age_of_all)
            continue;
        const std::optional<Period> period = period_of(times[i], age);
        // From the newest to the oldest, so the first one of a period is the last that was made in it.
        const bool stays = i == 0 || (period && period != last);
        last = period;
        if (!stays)
            removed.push_back(times[i]);
    }
    std::reverse(removed.begin(), removed.end());
    return removed;
}

} // namespace cuedrill::keep
