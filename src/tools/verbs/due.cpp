#include "scheduler/forecast.h"
#include "store/side_fields.h"
#include "tools/forecast_figures.h"
#include "tools/json.h"
#include "tools/opened_course.h"
#include "tools/table.h"
#include "tools/verbs.h"

#include <array>
#include <cstddef>
#include <ostream>
#include <string>

namespace cuedrill::tools {
namespace {

using scheduler::Forecast;

constexpr std::array<Option, 1> options{
    {{"--json", "", "Prints it in JSON, with a list of the days from tomorrow on."}}};

constexpr int days_ahead = 30;

constexpr std::string_view help =
    "A question is due when the time of rest of its level has passed since its last test. Overdue ones are due since a "
    "day\n"
    "before today. What is due on a day counts as if nothing were asked until then. Exit code 1: nothing is due now "
    "in\n"
    "the direction that the course asks at present, and nothing is new there.\n";

void print(const Forecast& questions, const Forecast& inverted, common::DateTime now, std::ostream& out)
{
    Table table({{"", Table::Align::left}, {"QUESTIONS", Table::Align::right}, {"INVERTED", Table::Align::right}});
    const auto add = [&](const std::string& what, std::int64_t of_questions, std::int64_t of_inverted) {
        table.add({what, std::to_string(of_questions), std::to_string(of_inverted)});
    };
    add("Due now", questions.due_now(), inverted.due_now());
    add("of which overdue", questions.overdue, inverted.overdue);
    add("Later today", questions.later, inverted.later);
    add("New", questions.never_tested, inverted.never_tested);
    for (std::size_t day = 0; day < questions.days.size(); ++day)
        add(iso_date(now.plus_days(static_cast<double>(day) + 1)), questions.days[day], inverted.days[day]);
    add("After that", questions.afterwards, inverted.afterwards);
    add("Passed", questions.passed, inverted.passed);
    table.print(out);
}

int run(const Arguments& arguments, Surroundings& around)
{
    OpenedCourse opened(arguments.word(0), OpenedCourse::For::reading, around);
    const auto forecast_of = [&](bool invert) {
        return scheduler::forecast(opened.course().database(), store::set_side_fields(invert).Q_FIELD,
                                   opened.dead_times(), opened.course().params.target_level, opened.now(), days_ahead);
    };
    const Forecast questions = forecast_of(false);
    const Forecast inverted = forecast_of(true);
    if (arguments.has("--json"))
        around.out << json_object({{"questions", forecast_json(questions, opened.now())},
                                   {"inverted", forecast_json(inverted, opened.now())}})
                   << '\n';
    else
        print(questions, inverted, opened.now(), around.out);
    const Forecast& asked = opened.inverted() ? inverted : questions;
    return asked.due_now() + asked.never_tested > 0 ? done : not_all_done;
}

} // namespace

const Verb& due_verb()
{
    static const Verb verb{
        "due", "Tells how many questions are due now and in the next days.", {"COURSE", 1, 1, options}, help, run};
    return verb;
}

} // namespace cuedrill::tools
