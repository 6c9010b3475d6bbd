#include "bank/list_lines.h"
#include "bank/question_list.h"
#include "bank/record_search.h"
#include "bare_sqlite.h"
#include "common/errors.h"
#include "engine.h"
#include "list_of_questions.h"
#include "operations.h"

#include <algorithm>
#include <benchmark/benchmark.h>
#include <cstddef>
#include <memory>
#include <optional>
#include <utility>

namespace cuedrill::bench {
namespace {

/// A part of a word that occurs in 4 % of the questions.
constexpr const char* searched_text = "neka";

std::shared_ptr<Engine> open_sample(const WorkFolder& folder, int records)
{
    auto engine = std::make_shared<Engine>(fresh_sample(folder, records));
    engine->open();
    return engine;
}

Work all_questions(const WorkFolder& folder, int records)
{
    return {.run = [engine = open_sample(folder, records), records] {
        if (question_lines(*engine, "order by q", true).size() != list_length(records))
            throw common::Error("the list is not as long as it can be");
    }};
}

Work by_level(const WorkFolder& folder, int records)
{
    return {.run = [engine = open_sample(folder, records)] {
        benchmark::DoNotOptimize(question_lines(*engine, "order by q_successes", false));
    }};
}

Work by_last_show(const WorkFolder& folder, int records)
{
    return {.run = [engine = open_sample(folder, records)] {
        benchmark::DoNotOptimize(question_lines(*engine, "order by q_date_last_show", false));
    }};
}

std::size_t records_to_be_found(int records)
{
    std::size_t found = 0;
    for (int number = 1; number <= records; ++number)
        found += question_of(number).find(searched_text) != std::string::npos ? 1U : 0U;
    return found;
}

Work search(const WorkFolder& folder, int records)
{
    const std::size_t expected = records_to_be_found(records);
    return {.run = [engine = open_sample(folder, records), expected] {
        const bank::FoundRecords found = bank::search(engine->course, engine->course.Q_FIELD, searched_text);
        if (found.list.lines().size() != expected)
            throw common::Error("not what is there was found");
    }};
}

/// Steps through the rows of a query and copies both texts and the level of each row.
Work copied_rows(const WorkFolder& folder, int records, const std::string& clauses)
{
    struct Reading {
        explicit Reading(const std::string& path, const std::string& sql)
            : sqlite(path, text_compare), rows(sqlite, sql)
        {
        }
        platform::icu::IcuTextCompare text_compare;
        BareSqlite sqlite;
        BareStatement rows;
        std::string question;
        std::string answer;
    };
    const auto floor =
        std::make_shared<Reading>(fresh_sample(folder, records), "select q, a, q_successes from qa " + clauses);
    return {.run = [floor] {
        while (floor->rows.step()) {
            floor->question = floor->rows.text(0);
            floor->answer = floor->rows.text(1);
            benchmark::DoNotOptimize(floor->question.data());
            benchmark::DoNotOptimize(floor->answer.data());
            benchmark::DoNotOptimize(floor->rows.integer(2));
        }
    }};
}

std::string as_long_as_a_list()
{
    return " limit " + std::to_string(bank::longest_list);
}

Work all_questions_floor(const WorkFolder& folder, int records)
{
    return copied_rows(folder, records, "order by q" + as_long_as_a_list());
}

Work by_level_floor(const WorkFolder& folder, int records)
{
    return copied_rows(folder, records, "order by q_successes" + as_long_as_a_list());
}

Work by_last_show_floor(const WorkFolder& folder, int records)
{
    return copied_rows(folder, records, "order by q_date_last_show" + as_long_as_a_list());
}

Work search_floor(const WorkFolder& folder, int records)
{
    return copied_rows(folder, records, std::string("where q like '%") + searched_text + "%' order by q");
}

} // namespace

std::size_t list_length(int records)
{
    return std::min(static_cast<std::size_t>(records), bank::longest_list);
}

std::vector<std::string> question_lines(Engine& engine, const std::string& clause, bool with_answers)
{
    std::optional<bank::QuestionList> questions = bank::read_questions(engine.course, clause, with_answers);
    if (!questions)
        throw common::Error("The course has no records.");
    bank::make_lines(*questions, engine.course, engine.text_compare);
    return std::move(questions->lines);
}

std::vector<Operation> list_operations()
{
    return {{.name = "list of all questions with answers", .program = all_questions, .floor = all_questions_floor},
            {.name = "list by level", .program = by_level, .floor = by_level_floor},
            {.name = "list by date of last show", .program = by_last_show, .floor = by_last_show_floor},
            {.name = "search", .program = search, .floor = search_floor}};
}

} // namespace cuedrill::bench
