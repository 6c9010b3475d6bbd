#include "keep/history_line.h"

#include "common/number_format.h"
#include "keep/copy_names.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <system_error>
#include <tuple>
#include <utility>
#include <vector>

namespace cuedrill::keep {
namespace {

constexpr std::array<std::string_view, 9> kind_words{"opened", "closed",   "verdict", "undone", "reset",
                                                     "added",  "imported", "changed", "deleted"};

constexpr std::array<std::string_view, 2> direction_words{"q", "a"};
constexpr std::array<std::string_view, 2> known_words{"no", "yes"};
constexpr std::array<std::string_view, 2> judged_words{"self", "typed"};

/// Stands in the last column of each line, so that a line that was cut off is never taken for a whole one.
constexpr std::string_view format = "1";

/// Decimals of a day: less than a second.
constexpr int decimals = 5;

constexpr std::size_t columns_before_levels = 12;
constexpr std::size_t levels_of_direction = std::tuple_size_v<scheduler::LevelNumbers>;
constexpr std::size_t columns = columns_before_levels + 2 * levels_of_direction + 1;

template <class Number>
std::string text_of(const std::optional<Number>& number)
{
    return number ? std::to_string(*number) : std::string();
}

std::string word_of(const std::optional<bool>& flag, const std::array<std::string_view, 2>& words)
{
    return flag ? std::string(words.at(*flag ? 1 : 0)) : std::string();
}

void append_levels(std::string& line, const scheduler::LevelsOfBoth* levels)
{
    if (levels == nullptr) {
        line.append(2 * levels_of_direction, ',');
        return;
    }
    for (const scheduler::LevelNumbers* const numbers : {&levels->q, &levels->a}) {
        for (const std::int64_t number : *numbers)
            line.append(",").append(std::to_string(number));
    }
}

/// The fields of a line of CSV; nothing if a quote is not closed.
std::optional<std::vector<std::string>> fields_of(std::string_view line)
{
    std::vector<std::string> fields(1);
    bool quoted = false;
    for (std::size_t at = 0; at < line.size(); ++at) {
        if (line[at] == '"' && quoted && line.substr(at + 1).starts_with('"'))
            fields.back() += line[at++];
        else if (line[at] == '"')
            quoted = !quoted;
        else if (line[at] == ',' && !quoted)
            fields.emplace_back();
        else
            fields.back() += line[at];
    }
    return quoted ? std::nullopt : std::optional(std::move(fields));
}

/// Reads the fields of a line. What cannot be read is remembered.
class FieldReader {
public:
    explicit FieldReader(const std::vector<std::string>& fields) : fields_(fields) {}

    [[nodiscard]] bool failed() const { return failed_; }
    /// The next field.
    [[nodiscard]] const std::string& next() { return fields_.at(place_++); }

    template <class Number>
    std::optional<Number> number()
    {
        const std::string& field = next();
        if (field.empty())
            return std::nullopt;
        Number value = 0;
        const char* const end = field.data() + field.size();
        const auto read = std::from_chars(field.data(), end, value);
        failed_ = failed_ || read.ec != std::errc() || read.ptr != end;
        return value;
    }

    /// A number that must be there.
    template <class Number>
    Number needed_number()
    {
        const std::optional<Number> value = number<Number>();
        failed_ = failed_ || !value;
        return value.value_or(0);
    }

    std::optional<double> decimal_number()
    {
        const std::string& field = next();
        const std::optional<double> value = common::parse_number(field);
        failed_ = failed_ || (!value && !field.empty());
        return value;
    }

    /// The place of the next field among these words.
    template <std::size_t count>
    std::optional<std::size_t> word(const std::array<std::string_view, count>& words)
    {
        const std::string& field = next();
        if (field.empty())
            return std::nullopt;
        const auto found = std::find(words.begin(), words.end(), field);
        failed_ = failed_ || found == words.end();
        return static_cast<std::size_t>(found - words.begin());
    }

    std::optional<bool> flag(const std::array<std::string_view, 2>& words)
    {
        const std::optional<std::size_t> place = word(words);
        return place ? std::optional(*place == 1) : std::nullopt;
    }

    /// All numbers of both directions, or none.
    std::optional<scheduler::LevelsOfBoth> levels()
    {
        const std::size_t end = place_ + 2 * levels_of_direction;
        if (std::all_of(fields_.begin() + static_cast<std::ptrdiff_t>(place_),
                        fields_.begin() + static_cast<std::ptrdiff_t>(end),
                        [](const std::string& field) { return field.empty(); })) {
            place_ = end;
            return std::nullopt;
        }
        scheduler::LevelsOfBoth levels;
        for (scheduler::LevelNumbers* const numbers : {&levels.q, &levels.a}) {
            for (std::int64_t& number : *numbers)
                number = needed_number<std::int64_t>();
        }
        return levels;
    }

private:
    const std::vector<std::string>& fields_;
    std::size_t place_ = 0;
    bool failed_ = false;
};

/// Where the two forms of a time differ: 2026-11-22T15:45:10 and 2026-11-22_15-45-10.
constexpr std::array<std::pair<std::size_t, std::string_view>, 3> different_signs{{{10, "T_"}, {13, ":-"}, {16, ":-"}}};

std::optional<common::DateTime> time_of(std::string text)
{
    for (const auto& [place, signs] : different_signs) {
        if (text.size() <= place || text[place] != signs[0])
            return std::nullopt;
        text[place] = signs[1];
    }
    return time_of_name(text);
}

/// Whether the event has what its kind must have.
bool is_complete(const HistoryEvent& event)
{
    switch (event.kind) {
    case HistoryKind::verdict:
        return event.record && event.known && event.typed && event.level_before && event.level_after && event.elapsed;
    case HistoryKind::undone:
        return event.record && event.level_before && event.level_after;
    case HistoryKind::imported:
        return event.record && event.records;
    case HistoryKind::added:
    case HistoryKind::changed:
    case HistoryKind::deleted:
        return event.record.has_value();
    case HistoryKind::opened:
    case HistoryKind::closed:
    case HistoryKind::reset:
        break;
    }
    return true;
}

} // namespace

std::string_view word_of(HistoryKind kind)
{
    return kind_words.at(static_cast<std::size_t>(kind));
}

std::string iso_time(common::DateTime time)
{
    std::string text = time_name(time);
    for (const auto& [place, signs] : different_signs)
        text.at(place) = signs[0];
    return text;
}

const std::string& history_header()
{
    static const std::string header = [] {
        std::string names = "time,event,record,direction,known,judged,level_before,level_after,elapsed_days,records,"
                            "score,work_seconds";
        for (const std::string_view direction : direction_words) {
            for (std::size_t level = 0; level < levels_of_direction; ++level)
                names.append(",").append(direction).append(std::to_string(level));
        }
        return names + ",format";
    }();
    return header;
}

std::string to_line(const HistoryEvent& event)
{
    std::string line = iso_time(event.time);
    const auto add = [&line](std::string_view field) { line.append(",").append(field); };
    add(word_of(event.kind));
    add(text_of(event.record));
    add(direction_words.at(event.inverted ? 1 : 0));
    add(word_of(event.known, known_words));
    add(word_of(event.typed, judged_words));
    add(text_of(event.level_before));
    add(text_of(event.level_after));
    add(event.elapsed ? common::format_fixed(*event.elapsed, decimals) : "");
    add(text_of(event.records));
    add(std::to_string(event.score));
    add(std::to_string(event.work_seconds));
    append_levels(line, event.levels ? &*event.levels : nullptr);
    add(format);
    return line;
}

std::optional<HistoryEvent> from_line(std::string_view line)
{
    if (line.ends_with('\r'))
        line.remove_suffix(1);
    const std::optional<std::vector<std::string>> fields = fields_of(line);
    if (!fields || fields->size() != columns || fields->back() != format)
        return std::nullopt;
    FieldReader reader(*fields);
    const std::optional<common::DateTime> time = time_of(reader.next());
    const std::optional<std::size_t> kind = reader.word(kind_words);
    if (!time || !kind)
        return std::nullopt;
    HistoryEvent event{.time = *time, .kind = static_cast<HistoryKind>(*kind)};
    event.record = reader.number<common::Int16>();
    const std::optional<bool> inverted = reader.flag(direction_words);
    if (!inverted)
        return std::nullopt;
    event.inverted = *inverted;
    event.known = reader.flag(known_words);
    event.typed = reader.flag(judged_words);
    event.level_before = reader.number<common::Int16>();
    event.level_after = reader.number<common::Int16>();
    event.elapsed = reader.decimal_number();
    event.records = reader.number<std::int64_t>();
    event.score = reader.needed_number<common::Int16>();
    event.work_seconds = reader.needed_number<std::int64_t>();
    event.levels = reader.levels();
    return reader.failed() || !is_complete(event) ? std::nullopt : std::optional(event);
}

} // namespace cuedrill::keep
