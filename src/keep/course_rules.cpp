#include "keep/course_rules.h"

#include "store/course.h"

#include <array>
#include <cstdint>

namespace cuedrill::keep {
namespace {

struct Rule {
    const char* broken; ///< the condition, in SQL
    const char* one;    ///< behind "1 record"
    const char* many;   ///< behind the number of records
};

constexpr std::array<Rule, 3> rules{
    {{"cnt not between 1 and 32767", " has a number outside 1 to 32767 and cannot be asked.",
      " have numbers outside 1 to 32767 and cannot be asked."},
     {"q_successes not between 0 and 10 or a_successes not between 0 and 10", " has a level outside 0 to 10.",
      " have levels outside 0 to 10."},
     {"coalesce(q, '') = '' or coalesce(a, '') = ''", " has an empty question or answer.",
      " have an empty question or answer."}}};

} // namespace

std::vector<std::string> broken_rules(platform::Database& course)
{
    std::vector<std::string> found;
    for (const Rule& rule : rules) {
        const std::int64_t count =
            store::single_number(course, std::string("Select count(0) from qa where ") + rule.broken);
        if (count > 0)
            found.push_back(std::to_string(count) +
                            (count == 1 ? std::string(" record") + rule.one : std::string(" records") + rule.many));
    }
    return found;
}

} // namespace cuedrill::keep
