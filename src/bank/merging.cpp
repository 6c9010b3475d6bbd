#include "bank/merging.h"

#include "bank/compared_text.h"
#include "common/errors.h"
#include "store/course_transaction.h"

#include <functional>
#include <optional>
#include <set>
#include <string>
#include <utility>

namespace cuedrill::bank {
namespace {

constexpr const char* all_records = "Select * from qa order by cnt";

void for_each_row(platform::Database& database, const std::function<void(const platform::Row& row)>& visit)
{
    database.query(all_records, {}, [&](const platform::Row& row) {
        visit(row);
        return true;
    });
}

/// The texts that a course has, in a form in which texts that differ in case only are the same.
class KnownTexts {
public:
    KnownTexts(AlreadyThere already_there, const platform::TextCompare& text_compare)
        : already_there_(already_there), text_compare_(text_compare)
    {
    }

    void add(const store::QaRecord& record) { known_.insert(key_of(record)); }
    [[nodiscard]] bool have(const store::QaRecord& record) const { return known_.contains(key_of(record)); }

private:
    using Key = std::pair<std::string, std::string>;

    [[nodiscard]] Key key_of(const store::QaRecord& record) const
    {
        return {key_of(record.q), already_there_ == AlreadyThere::question ? std::string() : key_of(record.a)};
    }

    [[nodiscard]] std::string key_of(const std::string& text) const { return comparison_key(text, text_compare_); }

    AlreadyThere already_there_;
    const platform::TextCompare& text_compare_;
    std::set<Key> known_;
};

/// The rows of the other course that the course lacks.
platform::Rows missing_rows(store::Course& course, platform::Database& other, KnownTexts known,
                            std::vector<store::QaRecord>& left_out)
{
    for_each_row(course.database(), [&](const platform::Row& row) { known.add(store::record_of(row)); });
    platform::Rows missing;
    for_each_row(other, [&](const platform::Row& row) {
        store::QaRecord record = store::record_of(row);
        if (known.have(record))
            left_out.push_back(std::move(record));
        else
            missing.add(row);
    });
    return missing;
}

} // namespace

Merged merge(store::Course& course, platform::Database& other, AlreadyThere already_there,
             const platform::TextCompare& text_compare)
{
    store::CourseTransaction transaction(course);
    Merged merged;
    const platform::Rows missing =
        missing_rows(course, other, KnownTexts(already_there, text_compare), merged.left_out);
    merged.added = static_cast<std::int64_t>(missing.size());
    const std::int64_t count = course.count_records() + merged.added;
    if (count > common::max_int16)
        throw common::OverflowError("Together they would have " + std::to_string(count) + " records; " +
                                    std::to_string(common::max_int16) + " are the most that a course can hold.");
    std::int64_t cnt = store::next_cnt(course.database());
    for (const platform::Row row : missing)
        store::insert_with_history(course.database(), cnt++, row);
    const std::optional<store::QaRecord> last =
        missing.empty() ? std::nullopt : std::optional(store::record_of(missing[missing.size() - 1]));
    transaction.commit({.is_stored = [&course, last, cnt] {
        const auto stored = store::find_record(course.database(), cnt - 1);
        return !last || (stored && stored->q == last->q && stored->a == last->a);
    }});
    course.record_count = count;
    if (last)
        course.tell_stored({.what = store::StoredChange::What::imported,
                            .cnt = common::to_int16(cnt - 1, "record number"),
                            .records = merged.added});
    return merged;
}

std::int64_t renumber(platform::Database& empty, platform::Database& other)
{
    platform::Transaction transaction(empty);
    std::int64_t count = 0;
    for_each_row(other, [&](const platform::Row& row) { store::insert_with_history(empty, ++count, row); });
    other.query("Select param, date_value, string_value, number_value from params", {}, [&](const platform::Row& row) {
        empty.execute("Insert into params (param, date_value, string_value, number_value) values (?1, ?2, ?3, ?4)",
                      row.values());
        return true;
    });
    transaction.commit();
    return count;
}

} // namespace cuedrill::bank
