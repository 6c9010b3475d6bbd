#include "bank/search_text.h"
#include "common/text.h"
#include "scheduler/dead_time.h"
#include "scheduler/maturity.h"
#include "store/side_fields.h"
#include "tools/json.h"
#include "tools/opened_course.h"
#include "tools/table.h"
#include "tools/verbs.h"

#include <array>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

namespace cuedrill::tools {
namespace {

constexpr std::array<Option, 5> options{
    {{"--due", "", "Only those that are due now. Those that were never tested are not among them."},
     {"--level", "N", "Only those of level N, 0 to 10."},
     {"--search", "TEXT", "Only those with TEXT in the question or the answer; * and ? are wildcards."},
     {"--inverted", "", "Levels and dates of the other direction, in which the answers are asked."},
     {"--json", "", "Prints a list in JSON, with all that a record has."}}};

constexpr std::string_view help = "Prints number, level, question and answer in the order of the numbers. Exit code 1: "
                                  "there is none.\n";

/// What a record must have to be listed.
struct Choice {
    bool due = false;
    std::optional<std::int64_t> level;
    std::optional<std::string> search;
};

std::string condition_of(const Choice& choice, OpenedCourse& opened, const store::SideFields& side)
{
    std::string condition;
    const auto add = [&](const std::string& part) { condition += (condition.empty() ? " where " : " and ") + part; };
    if (choice.due)
        add("cnt in (Select cnt from (" +
            scheduler::all_mature_query(side, opened.dead_times(), opened.course().params.target_level,
                                        scheduler::MatureResult::rows, opened.now()) +
            "))");
    if (choice.level)
        add("ifnull(" + side.successes + ", 0) = " + std::to_string(*choice.level));
    if (choice.search) {
        const std::string pattern = "'*" + bank::escape_like(*choice.search) + "*'";
        add("(q like " + pattern + " or a like " + pattern + ")");
    }
    return condition;
}

std::string json_of(const store::RecordSide& side)
{
    const auto date = [](const std::optional<common::DateTime>& when) {
        return when ? json_text(common::format_date_time(*when)) : std::string("null");
    };
    return json_object({{"level", std::to_string(side.successes)},
                        {"attempts", std::to_string(side.attempts)},
                        {"fails", std::to_string(side.fails)},
                        {"last_test", date(side.date_last_test)},
                        {"last_show", date(side.date_last_show)}});
}

std::string json_of(const store::QaRecord& record)
{
    return json_object({{"number", std::to_string(record.cnt)},
                        {"question", json_text(record.q)},
                        {"answer", json_text(record.a)},
                        {"questions", json_of(store::side_of(record, store::set_side_fields(false).Q_FIELD))},
                        {"inverted", json_of(store::side_of(record, store::set_side_fields(true).Q_FIELD))}});
}

void print_table(const std::vector<store::QaRecord>& records, const store::SideFields& side, std::ostream& out)
{
    Table table({{"NUMBER", Table::Align::right},
                 {"LEVEL", Table::Align::right},
                 {"QUESTION", Table::Align::left},
                 {"ANSWER", Table::Align::left}});
    for (const store::QaRecord& record : records)
        table.add({std::to_string(record.cnt), std::to_string(store::side_of(record, side).successes),
                   on_one_line(record.q), on_one_line(record.a)});
    table.print(out);
}

int run(const Arguments& arguments, Surroundings& around)
{
    Choice choice{arguments.has("--due"), {}, arguments.value("--search")};
    if (const auto level = arguments.value("--level"))
        choice.level = number_in(*level, "N", 0, scheduler::highest_level);
    OpenedCourse opened(arguments.word(0), OpenedCourse::For::reading, around);
    const store::SideFields side = store::set_side_fields(arguments.has("--inverted")).Q_FIELD;
    std::vector<store::QaRecord> records;
    opened.course().database().query("Select * from qa" + condition_of(choice, opened, side) + " order by cnt", {},
                                     [&](const platform::Row& row) {
                                         records.push_back(store::record_of(row));
                                         return true;
                                     });
    if (arguments.has("--json")) {
        std::vector<std::string> values;
        for (const store::QaRecord& record : records)
            values.push_back(json_of(record));
        around.out << json_list(values) << '\n';
    } else if (!records.empty()) {
        print_table(records, side, around.out);
    }
    return records.empty() ? not_all_done : done;
}

} // namespace

const Verb& list_verb()
{
    static const Verb verb{
        "list", "Lists records with their numbers and levels.", {"COURSE", 1, 1, options}, help, run};
    return verb;
}

} // namespace cuedrill::tools
