#include "common/errors.h"
#include "common/number_format.h"
#include "keep/history_file.h"
#include "platform/system/system_directories.h"
#include "platform/system/system_files.h"
#include "tools/course_reading.h"
#include "tools/json.h"
#include "tools/verbs.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <iomanip>
#include <limits>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

namespace cuedrill::tools {
namespace {

using keep::HistoryEvent;
using keep::HistoryKind;
using keep::HistoryLine;

constexpr std::array<Option, 3> options{
    {{"--csv", "", "Prints the file as it is stored."},
     {"--json", "", "Prints the history in JSON."},
     {"--adopt", "OLD-PATH", "Joins the history of the course that was at OLD-PATH to that of COURSE."}}};

constexpr std::string_view help =
    "The history tells each verdict, undo, reset, new, imported, changed and deleted record, and each opening and "
    "closing.\n"
    "It belongs to the path of the course: a course that was moved begins a new one, and --adopt brings the old one "
    "back.\n"
    "Neither course needs to exist any more. A line that cannot be read is left out and counted, but --csv prints "
    "it.\n";

/// Where histories are, and the machine's files.
class HistoriesOfUser {
public:
    /// @throws Refusal for a user without a data folder.
    explicit HistoriesOfUser(const Surroundings& around) : data_folder_(around.data_folder)
    {
        if (data_folder_.empty())
            throw Refusal("There is no folder of the user in which a history could be.");
    }

    [[nodiscard]] platform::Files& files() { return files_; }

    /// Full path of the history, which need not exist.
    [[nodiscard]] std::string path_of(const std::string& course) const
    {
        return keep::history_path(folders_, data_folder_, course);
    }

    /// The same of one that exists.
    /// @throws common::Error when there is none.
    [[nodiscard]] std::string existing(const std::string& course) const
    {
        std::string path = path_of(course);
        if (!files_.exists(path))
            throw common::Error("There is no history of " + course + ".");
        return path;
    }

private:
    std::string data_folder_;
    platform::system::SystemFiles files_;
    platform::system::SystemDirectories folders_;
};

std::string words_of_levels(const scheduler::LevelNumbers& numbers)
{
    // The levels behind the last one that has a question tell nothing.
    std::size_t count = numbers.size();
    while (count > 1 && numbers.at(count - 1) == 0)
        --count;
    std::string words;
    for (std::size_t level = 0; level < count; ++level)
        words += (level == 0 ? "" : " ") + std::to_string(numbers.at(level));
    return words;
}

std::string levels_changed(const HistoryEvent& event)
{
    return "level " + std::to_string(*event.level_before) + " to " + std::to_string(*event.level_after);
}

/// What the table tells about an event besides its time, kind, record and direction.
std::string details_of(const HistoryEvent& event)
{
    switch (event.kind) {
    case HistoryKind::verdict:
        return std::string(*event.known ? "known" : "not known") + (*event.typed ? ", typed, " : ", ") +
               levels_changed(event) + " after " + common::format_fixed(*event.elapsed, 2) + " days";
    case HistoryKind::undone:
        return levels_changed(event);
    case HistoryKind::imported:
        return std::to_string(*event.records) + (*event.records == 1 ? " record" : " records");
    case HistoryKind::opened:
    case HistoryKind::closed: {
        std::string words = "score " + std::to_string(event.score) + ", work " +
                            common::format_hours_minutes(static_cast<double>(event.work_seconds));
        if (event.levels)
            words += ", levels q " + words_of_levels(event.levels->q) + ", a " + words_of_levels(event.levels->a);
        return words;
    }
    case HistoryKind::reset:
    case HistoryKind::added:
    case HistoryKind::changed:
    case HistoryKind::deleted:
        break;
    }
    return {};
}

void print_row(const HistoryEvent& event, std::ostream& out)
{
    std::string time = keep::iso_time(event.time);
    time.at(time.find('T')) = ' ';
    const std::string details = details_of(event);
    out << time << "  " << std::left << std::setw(8) << keep::word_of(event.kind) << std::right << std::setw(8)
        << (event.record ? std::to_string(*event.record) : "") << "  " << (event.inverted ? "a" : "q")
        << (details.empty() ? "" : "  ") << details << '\n';
}

std::int64_t print_table(const platform::Files& files, const std::string& path, std::ostream& out)
{
    out << "TIME                 EVENT      RECORD  ASKED\n";
    std::int64_t unreadable = 0;
    keep::read_history(files, path, [&](const HistoryLine& line) {
        if (line.event)
            print_row(*line.event, out);
        else
            ++unreadable;
    });
    return unreadable;
}

std::string json_numbers(const scheduler::LevelNumbers& numbers)
{
    std::vector<std::string> values;
    for (const std::int64_t number : numbers)
        values.push_back(std::to_string(number));
    return json_list(values);
}

/// The fields that the event has, by the names of the columns.
std::string json_of(const HistoryEvent& event)
{
    std::string json = "{";
    const auto add = [&json](std::string_view name, const std::string& value) {
        json += (json.size() == 1 ? "" : ", ") + json_text(name) + ": " + value;
    };
    const auto add_number = [&add](std::string_view name, const auto& number) {
        if (number)
            add(name, std::to_string(*number));
    };
    add("time", json_text(keep::iso_time(event.time)));
    add("event", json_text(keep::word_of(event.kind)));
    add_number("record", event.record);
    add("direction", event.inverted ? "\"a\"" : "\"q\"");
    if (event.known)
        add("known", *event.known ? "true" : "false");
    if (event.typed)
        add("judged", *event.typed ? "\"typed\"" : "\"self\"");
    add_number("level_before", event.level_before);
    add_number("level_after", event.level_after);
    if (event.elapsed)
        add("elapsed_days", common::format_general(*event.elapsed));
    add_number("records", event.records);
    add("score", std::to_string(event.score));
    add("work_seconds", std::to_string(event.work_seconds));
    if (event.levels) {
        add("q", json_numbers(event.levels->q));
        add("a", json_numbers(event.levels->a));
    }
    return json + "}";
}

std::int64_t print_json(const platform::Files& files, const std::string& path, std::ostream& out)
{
    std::int64_t unreadable = 0;
    std::string_view separator;
    out << "{\"events\": [";
    keep::read_history(files, path, [&](const HistoryLine& line) {
        if (line.event) {
            out << separator << json_of(*line.event);
            separator = ", ";
        } else {
            ++unreadable;
        }
    });
    out << "], \"unreadable\": " << unreadable << "}\n";
    return unreadable;
}

void print_file(const platform::Files& files, const std::string& path, std::ostream& out)
{
    constexpr std::size_t piece_size = 65536;
    const auto reading = files.begin_reading(path, std::numeric_limits<std::uint64_t>::max());
    for (std::string piece = reading->read(piece_size); !piece.empty(); piece = reading->read(piece_size))
        out << piece;
}

void print(const Arguments& arguments, const platform::Files& files, const std::string& path, Surroundings& around)
{
    if (arguments.has("--csv")) {
        print_file(files, path, around.out);
        return;
    }
    const std::int64_t unreadable =
        arguments.has("--json") ? print_json(files, path, around.out) : print_table(files, path, around.out);
    if (unreadable != 0)
        around.err << unreadable << (unreadable == 1 ? " line" : " lines") << " could not be read.\n";
}

void adopt(const std::string& old_course, const std::string& course, HistoriesOfUser& histories, std::ostream& out)
{
    const std::string to = histories.path_of(course);
    if (histories.path_of(old_course) == to)
        throw Refusal("The old path is that of the course itself.");
    const std::int64_t lines = keep::adopt_history(histories.files(), histories.existing(old_course), to);
    out << lines << (lines == 1 ? " line" : " lines") << " of the history of " << old_course << " joined to that of "
        << course << ".\n";
}

int run(const Arguments& arguments, Surroundings& around)
{
    const std::string course = absolute(arguments.word(0));
    HistoriesOfUser histories(around);
    if (const std::optional<std::string> old_course = arguments.value("--adopt"))
        adopt(absolute(*old_course), course, histories, around.out);
    else
        print(arguments, histories.files(), histories.existing(course), around);
    return done;
}

} // namespace

const Verb& history_verb()
{
    static const Verb verb{
        "history", "Prints the history of the reviews of a course.", {"COURSE", 1, 1, options}, help, run};
    return verb;
}

} // namespace cuedrill::tools
