#include "bank/duplicates.h"
#include "tools/json.h"
#include "tools/opened_course.h"
#include "tools/table.h"
#include "tools/verbs.h"

#include <array>
#include <ostream>
#include <string>
#include <vector>

namespace cuedrill::tools {
namespace {

constexpr std::array<Option, 2> options{{{"--answers", "", "Looks for answers that stand twice, not for questions."},
                                         {"--json", "", "Prints a list of lists in JSON."}}};

constexpr std::string_view help = "Texts that differ in case only are the same. Each group begins with the text; its "
                                  "records follow.\n";

void print(const std::vector<bank::SameTexts>& groups, bool answers, std::ostream& out)
{
    if (groups.empty())
        out << (answers ? "No answer" : "No question") << " stands twice.\n";
    for (const bank::SameTexts& group : groups) {
        const store::QaRecord& first = group.front();
        out << on_one_line(answers ? first.a : first.q) << '\n';
        for (const store::QaRecord& record : group)
            out << "  " << record.cnt << ": " << on_one_line(answers ? record.q : record.a) << '\n';
    }
}

std::string json_of(const std::vector<bank::SameTexts>& groups)
{
    std::vector<std::string> lists;
    for (const bank::SameTexts& group : groups) {
        std::vector<std::string> records;
        for (const store::QaRecord& record : group)
            records.push_back(json_object({{"number", std::to_string(record.cnt)},
                                           {"question", json_text(record.q)},
                                           {"answer", json_text(record.a)}}));
        lists.push_back(json_list(records));
    }
    return json_list(lists);
}

int run(const Arguments& arguments, Surroundings& around)
{
    OpenedCourse opened(arguments.word(0), OpenedCourse::For::reading, around);
    const bool answers = arguments.has("--answers");
    const std::vector<bank::SameTexts> groups =
        bank::find_duplicates(opened.course().database(), answers ? "a" : "q", opened.text_compare());
    if (arguments.has("--json"))
        around.out << json_of(groups) << '\n';
    else
        print(groups, answers, around.out);
    return done;
}

} // namespace

const Verb& dupes_verb()
{
    static const Verb verb{
        "dupes", "Finds records that have the same question or the same answer.", {"COURSE", 1, 1, options}, help, run};
    return verb;
}

} // namespace cuedrill::tools
