#include "bank/merging.h"
#include "common/errors.h"
#include "tools/opened_course.h"
#include "tools/table.h"
#include "tools/verbs.h"

#include <array>
#include <ostream>
#include <string>

namespace cuedrill::tools {
namespace {

constexpr std::array<Option, 1> options{
    {{"--skip-duplicates", "", "Leaves out each record whose question COURSE has already, also with another answer."}}};

constexpr std::string_view help =
    "The records of OTHER get new numbers and keep their levels, counts and dates in both directions. Those that "
    "COURSE\n"
    "has with the same question and answer are left out and listed. OTHER stays as it is. A copy of COURSE is made "
    "first.\n"
    "Exit code 1: nothing was added, or something was left out.\n";

void print(const bank::Merged& merged, std::ostream& out)
{
    out << merged.added << (merged.added == 1 ? " record was added.\n" : " records were added.\n");
    if (!merged.left_out.empty())
        out << merged.left_out.size() << " left out, because the course has them already:\n";
    for (const store::QaRecord& record : merged.left_out)
        out << "  " << record.cnt << ": " << on_one_line(record.q) << '\n';
}

int run(const Arguments& arguments, Surroundings& around)
{
    OpenedCourse opened(arguments.word(0), OpenedCourse::For::writing, around);
    const platform::system::SystemFiles files;
    if (files.is_same_file(arguments.word(0), arguments.word(1)))
        throw Refusal("Both are the same course.");
    OpenedCourse other(arguments.word(1), OpenedCourse::For::reading, around);
    opened.copy_first();
    const auto already =
        arguments.has("--skip-duplicates") ? bank::AlreadyThere::question : bank::AlreadyThere::both_texts;
    try {
        const bank::Merged merged =
            bank::merge(opened.course(), other.course().database(), already, opened.text_compare());
        print(merged, around.out);
        return merged.added > 0 && merged.left_out.empty() ? done : not_all_done;
    } catch (const common::OverflowError& error) {
        throw Refusal(std::string(error.what()) +
                      " Nothing was added. \"renumber\" makes a course in which no numbers are left out.");
    }
}

} // namespace

const Verb& merge_verb()
{
    static const Verb verb{
        "merge", "Adds the records of another course with their history.", {"COURSE OTHER", 2, 2, options}, help, run};
    return verb;
}

} // namespace cuedrill::tools
