#include "keep/salvage.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <limits>
#include <map>
#include <optional>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <utility>

namespace cuedrill::keep {
namespace {

using platform::Database;
using platform::DatabaseError;
using platform::DatabaseErrorKind;
using platform::Row;
using platform::Value;

/// The highest number of a record that a course of this program can have.
constexpr std::int64_t highest_number = std::numeric_limits<std::int16_t>::max();

constexpr std::string_view record_columns = "cnt, q, a, q_attempts, a_attempts, q_fails, a_fails, q_successes, "
                                            "a_successes, q_date_last_test, a_date_last_test, q_date_last_show, "
                                            "a_date_last_show";
constexpr std::string_view record_places = "?1, ?2, ?3, ?4, ?5, ?6, ?7, ?8, ?9, ?10, ?11, ?12, ?13";
constexpr std::size_t columns_of_record = 13;

/// The columns as they stand in `record_columns`.
enum Column : std::size_t {
    number_column = 0,
    q_column = 1,
    a_column = 2,
    q_level_column = 7,
    a_level_column = 8,
    q_test_column = 9,
    a_test_column = 10,
    q_show_column = 11,
    a_show_column = 12
};

using Record = std::vector<Value>;
using Numbers = std::set<std::int64_t>;

bool is_damage(const DatabaseError& error)
{
    // A damaged page can also keep a statement going until its time is over, or name a text that is too long.
    return error.kind() == DatabaseErrorKind::damaged || error.kind() == DatabaseErrorKind::not_a_course ||
           error.kind() == DatabaseErrorKind::input_output || error.kind() == DatabaseErrorKind::other;
}

/// Reads rows until the end or until a page that cannot be read.
/// @param visit is given each row and returns false to end the reading as one that has met damage.
/// @return whether it came to the end.
bool read_while_sound(Database& database, const std::string& sql, std::span<const Value> values,
                      const platform::RowVisitor& visit)
{
    bool to_the_end = true;
    try {
        database.query(sql, values, [&](const Row& row) {
            to_the_end = visit(row);
            return to_the_end;
        });
    } catch (const DatabaseError& error) {
        if (!is_damage(error))
            throw;
        to_the_end = false;
    }
    return to_the_end;
}

/// The whole number in a column; nothing if something else is there.
std::optional<std::int64_t> whole_number(const Row& row, int column)
{
    const auto* const number = std::get_if<std::int64_t>(&row.field(column));
    return number == nullptr ? std::nullopt : std::optional(*number);
}

/// Reads the records by their numbers.
class RecordReader {
public:
    explicit RecordReader(Database& damaged) : damaged_(damaged) {}

    /// Reads all that can be reached through the table.
    void read()
    {
        // The numbers next to these two are numbers as well.
        constexpr std::int64_t lowest = std::numeric_limits<std::int64_t>::min() + 1;
        constexpr std::int64_t highest = std::numeric_limits<std::int64_t>::max() - 1;
        const std::optional<NumberRange> gap = read_both_ways({lowest, highest});
        if (!gap)
            return;
        // Between the ends, only numbers that a course can have are looked for.
        std::vector<NumberRange> ranges{
            {std::max<std::int64_t>(gap->first, 1), std::min(gap->last, highest_known_number())}};
        while (!ranges.empty()) {
            const NumberRange range = ranges.back();
            ranges.pop_back();
            if (range.first > range.last)
                continue;
            const std::optional<NumberRange> left = read_both_ways(range);
            if (!left)
                continue;
            if (left->first == left->last) {
                lost.insert(left->first);
                continue;
            }
            const std::int64_t middle = left->first + (left->last - left->first) / 2;
            ranges.push_back({left->first, middle});
            ranges.push_back({middle + 1, left->last});
        }
    }

    std::map<std::int64_t, Record> records;
    Numbers lost; ///< what cannot be read, whether it was ever there or not

private:
    /// The highest number that the course has ever given.
    std::int64_t highest_known_number()
    {
        std::int64_t highest = highest_number;
        read_while_sound(damaged_, "Select seq from sqlite_sequence where name = 'qa'", {}, [&](const Row& row) {
            const std::int64_t given = whole_number(row, 0).value_or(0);
            if (given > 0)
                highest = std::min(given, highest_number);
            return true;
        });
        return highest;
    }

    /// Reads from both ends as far as a page that cannot be read.
    /// @return what is left between; nothing if all is read.
    std::optional<NumberRange> read_both_ways(NumberRange range)
    {
        std::int64_t next = range.first;
        const bool all = read(range, "", [&](std::int64_t number) {
            const bool follows = number >= next;
            next = number + 1;
            return follows;
        });
        if (all)
            return std::nullopt;
        range.first = next;
        if (range.first > range.last)
            return std::nullopt;
        std::int64_t previous = range.last;
        const bool rest = read(range, " desc", [&](std::int64_t number) {
            const bool follows = number <= previous;
            previous = number - 1;
            return follows;
        });
        range.last = previous;
        return rest || range.first > range.last ? std::nullopt : std::optional(range);
    }

    /// @param take is given each number and tells whether it stands in its place: a damaged tree may lead round in a
    /// circle.
    template <class Take>
    bool read(NumberRange range, std::string_view direction, Take take)
    {
        const std::array<Value, 2> values{range.first, range.last};
        const std::string sql = "Select " + std::string(record_columns) +
                                " from qa where cnt >= ?1 and cnt <= ?2 order by cnt" + std::string(direction);
        return read_while_sound(damaged_, sql, values, [&](const Row& row) {
            const std::optional<std::int64_t> number = whole_number(row, 0);
            if (!number || !take(*number))
                return false;
            records.emplace(*number, Record(row.values().begin(), row.values().end()));
            return true;
        });
    }

    Database& damaged_;
};

/// What the indexes know of records whose page is lost.
class IndexReader {
public:
    explicit IndexReader(Database& damaged) : damaged_(damaged) {}

    void read(const Numbers& lost)
    {
        const bool all_q = read("qa_q", "cnt, q", "q", {{1, q_column}}, lost);
        const bool all_a = read("qa_a", "cnt, a", "a", {{1, a_column}}, lost);
        knows_all_numbers = all_q || all_a;
        const std::string of_q = "q_successes, q_date_last_test";
        const std::string of_a = "a_successes, a_date_last_test";
        static_cast<void>(read("qa_q_due", "cnt, " + of_q + ", q_date_last_show", of_q,
                               {{1, q_level_column}, {2, q_test_column}, {3, q_show_column}}, lost));
        static_cast<void>(read("qa_a_due", "cnt, " + of_a + ", a_date_last_show", of_a,
                               {{1, a_level_column}, {2, a_test_column}, {3, a_show_column}}, lost));
    }

    std::map<std::int64_t, Record> records; ///< some with a missing text
    bool knows_all_numbers = false;         ///< a record that is not here has never been there

private:
    using Places = std::vector<std::pair<int, Column>>; ///< column of the query, column of the record

    bool read(const std::string& index, const std::string& columns, const std::string& order, const Places& places,
              const Numbers& lost)
    {
        const std::string sql = "Select " + columns + " from qa indexed by " + index + " order by ";
        if (read(sql + order, places, lost))
            return true;
        static_cast<void>(read(sql + descending(order), places, lost));
        return false;
    }

    bool read(const std::string& sql, const Places& places, const Numbers& lost)
    {
        // A damaged tree may lead round in a circle.
        std::int64_t rows_left = 2 * highest_number;
        return read_while_sound(damaged_, sql, {}, [&](const Row& row) {
            const std::optional<std::int64_t> number = whole_number(row, 0);
            if (!number || rows_left-- == 0)
                return false;
            if (!lost.contains(*number))
                return true;
            Record& record = records.try_emplace(*number, Record(columns_of_record)).first->second;
            record[number_column] = *number;
            for (const auto& [from, to] : places)
                record[to] = row.field(from);
            return true;
        });
    }

    static std::string descending(const std::string& order)
    {
        const std::size_t comma = order.find(',');
        return comma == std::string::npos ? order + " desc"
                                          : order.substr(0, comma) + " desc" + order.substr(comma) + " desc";
    }

    Database& damaged_;
};

std::vector<NumberRange> ranges_of(const Numbers& numbers)
{
    std::vector<NumberRange> ranges;
    for (const std::int64_t number : numbers) {
        if (!ranges.empty() && ranges.back().last == number - 1)
            ranges.back().last = number;
        else
            ranges.push_back({number, number});
    }
    return ranges;
}

/// @return false if the new course does not take the row.
bool insert(Database& fresh, const std::string& sql, std::span<const Value> values)
{
    try {
        fresh.execute(sql, values);
        return true;
    } catch (const DatabaseError& error) {
        if (error.kind() != DatabaseErrorKind::constraint)
            throw;
        return false;
    }
}

bool insert_record(Database& fresh, const Record& record)
{
    const auto* const number = std::get_if<std::int64_t>(&record[number_column]);
    if (number == nullptr || *number < 1 || *number > highest_number)
        return false;
    return insert(fresh,
                  "Insert into qa (" + std::string(record_columns) + ") values (" + std::string(record_places) + ")",
                  record);
}

/// Reads the parameters from both ends; each row counts once.
/// @return whether all of them were read.
bool read_parameters(Database& damaged, std::vector<Record>& rows)
{
    Numbers taken;
    const auto take = [&](const Row& row) {
        const std::optional<std::int64_t> place = whole_number(row, 4);
        if (!place || !taken.insert(*place).second)
            return false;
        const std::span<const Value> values = row.values().first(4);
        rows.emplace_back(values.begin(), values.end());
        return true;
    };
    const std::string sql = "Select param, date_value, string_value, number_value, rowid from params order by rowid";
    if (read_while_sound(damaged, sql, {}, take))
        return true;
    read_while_sound(damaged, sql + " desc", {}, take);
    return false;
}

bool bring_over_parameters(Database& damaged, Database& fresh)
{
    std::vector<Record> rows;
    bool all = read_parameters(damaged, rows);
    for (const Record& row : rows)
        all =
            insert(fresh, "Insert into params (param, date_value, string_value, number_value) values (?1, ?2, ?3, ?4)",
                   row) &&
            all;
    return all;
}

} // namespace

Salvaged salvage(Database& damaged, Database& fresh)
{
    RecordReader table(damaged);
    table.read();
    IndexReader indexes(damaged);
    if (!table.lost.empty())
        indexes.read(table.lost);

    Salvaged result;
    Numbers refused;
    Numbers lost = indexes.knows_all_numbers ? Numbers() : table.lost;
    platform::Transaction transaction(fresh);
    for (const auto& [number, record] : table.records) {
        if (insert_record(fresh, record))
            ++result.whole;
        else
            refused.insert(number);
    }
    for (const auto& [number, record] : indexes.records) {
        const bool has_texts = std::holds_alternative<std::string>(record[q_column]) &&
                               std::holds_alternative<std::string>(record[a_column]);
        if (has_texts && insert_record(fresh, record)) {
            ++result.from_indexes;
            lost.erase(number);
        } else {
            lost.insert(number);
        }
    }
    result.all_parameters = bring_over_parameters(damaged, fresh);
    transaction.commit();
    result.refused = ranges_of(refused);
    result.lost = ranges_of(lost);
    return result;
}

} // namespace cuedrill::keep
