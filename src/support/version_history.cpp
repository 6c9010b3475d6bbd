#include "support/version_history.h"

#include "common/date_time.h"
#include "common/text.h"
#include "support/program_name.h"
#include "support/version_entries.h"

namespace cuedrill::support {
namespace {

/// The two-digit number at `place`.
int two_digits(std::string_view text, std::size_t place)
{
    return (text[place] - '0') * 10 + (text[place + 1] - '0');
}

std::string day_month_year(const common::CalendarFields& date)
{
    constexpr std::string_view shape = "dd/mmm/yyyy";
    return common::format_date_literal(common::DateTime::from_fields(date)).substr(0, shape.size());
}

} // namespace

std::string newest_version(std::string_view history)
{
    const std::size_t number_end = history.find('^');
    const std::string_view date = history.substr(number_end + 1);
    return "3.0." + std::string(history.substr(0, number_end)) + " (" +
           day_month_year(
               {.year = 2000 + two_digits(date, 0), .month = two_digits(date, 2), .day = two_digits(date, 4)}) +
           ")";
}

std::string version_history_text(bool version_only)
{
    std::string history;
    for (const std::string_view line : version_entries)
        history.append(line).append(common::cr_lf);
    history += "[end of version history]";
    return version_only ? newest_version(history) : history;
}

std::string program_version()
{
    return version_history_text(true);
}

std::string release_notes_text()
{
    std::string notes;
    for (const std::string& line : {
             std::string(9, ' ').append(program_title) + " VERSION HISTORY ",
             std::string(),
             "Current version is " + program_version(),
             std::string(),
             std::string("It includes the following changes (F = bug fixed, I = improvement, N = new function)"),
             std::string(84, '-'),
         })
        notes.append(line).append(common::cr_lf);
    return notes + version_history_text(false);
}

} // namespace cuedrill::support
