#include "common/errors.h"
#include "keep/salvage.h"
#include "store/schema.h"
#include "tools/course_reading.h"
#include "tools/json.h"
#include "tools/new_course.h"
#include "tools/verbs.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <iterator>
#include <optional>
#include <ostream>

namespace cuedrill::tools {
namespace {

constexpr std::array<Option, 2> options{
    {{"--salvage", "FILE", "Reads what can be read into the new course FILE, which must not exist."},
     {"--json", "", "Prints the result in JSON."}}};

constexpr std::string_view help =
    "Reads the whole course, compares its indexes with its tables, and says what is wrong. The course is not changed,\n"
    "except that a journal that a crash has left is applied, as by any opening.\n"
    "With --salvage, the records that can be read get into a new course, with their numbers, levels and dates, and "
    "the\n"
    "parameters; the numbers of the others are listed. What stands on a damaged page is put together from the indexes\n"
    "as far as they go: then attempts and failures of a record are missing. Exit code 1: not sound, or not all "
    "records\n"
    "were salvaged.\n";

/// What the verb tells.
struct Result {
    std::string course;
    std::vector<std::string> findings;
    std::optional<std::int64_t> records;
    std::string salvaged_to; ///< "" for nothing
    std::optional<keep::Salvaged> salvaged;
};

std::string words_of(const std::vector<keep::NumberRange>& ranges)
{
    std::string words;
    for (const keep::NumberRange& range : ranges) {
        words += words.empty() ? "" : ", ";
        words += std::to_string(range.first);
        if (range.last != range.first)
            words += " to " + std::to_string(range.last);
    }
    return words;
}

std::string json_of(const std::vector<keep::NumberRange>& ranges)
{
    std::vector<std::string> values;
    for (const keep::NumberRange& range : ranges)
        values.push_back(json_list({std::to_string(range.first), std::to_string(range.last)}));
    return json_list(values);
}

void print_salvaged(const Result& result, std::ostream& out)
{
    const keep::Salvaged& salvaged = *result.salvaged;
    out << salvaged.records() << (salvaged.records() == 1 ? " record was read" : " records were read");
    if (!result.salvaged_to.empty())
        out << " into " << result.salvaged_to;
    out << ".\n";
    if (salvaged.from_indexes > 0)
        out << salvaged.from_indexes << " of them were put together from the indexes, without attempts and failures.\n";
    if (!salvaged.lost.empty())
        out << "Not read: the records among the numbers " << words_of(salvaged.lost) << ".\n";
    if (!salvaged.refused.empty())
        out << "Read, but not as a course may hold them: the numbers " << words_of(salvaged.refused) << ".\n";
    if (!salvaged.all_parameters)
        out << "Not all parameters of the course (title, options, work times) were read.\n";
}

void print(const Result& result, std::ostream& out)
{
    if (result.findings.empty())
        out << result.course << " is sound: " << result.records.value_or(0) << " records.\n";
    else
        out << result.course << " is not sound:\n";
    for (const std::string& finding : result.findings)
        out << finding << '\n';
    if (result.salvaged)
        print_salvaged(result, out);
}

std::string json_of(const Result& result)
{
    std::vector<std::string> findings;
    std::transform(result.findings.begin(), result.findings.end(), std::back_inserter(findings), json_text);
    std::string json = "{\"course\": " + json_text(result.course) +
                       ", \"sound\": " + (findings.empty() ? "true" : "false") +
                       ", \"records\": " + (result.records ? std::to_string(*result.records) : "null") +
                       ", \"findings\": " + json_list(findings);
    if (result.salvaged) {
        const keep::Salvaged& salvaged = *result.salvaged;
        json += ", \"salvaged\": {\"file\": " +
                (result.salvaged_to.empty() ? std::string("null") : json_text(result.salvaged_to)) +
                ", \"records\": " + std::to_string(salvaged.records()) +
                ", \"from_indexes\": " + std::to_string(salvaged.from_indexes) +
                ", \"lost\": " + json_of(salvaged.lost) + ", \"refused\": " + json_of(salvaged.refused) +
                ", \"all_parameters\": " + (salvaged.all_parameters ? "true" : "false") + "}";
    }
    return json + "}";
}

/// @param target absolute path.
void salvage_into(const std::string& target, CourseReading& source, Result& result)
{
    if (platform::system::SystemFiles().exists(target))
        throw Refusal("There is a file " + target + " already.");
    NewCourse course(target);
    {
        const platform::icu::IcuTextCompare text_compare;
        platform::sqlite::SqliteDatabase fresh(text_compare);
        fresh.open(course.making(), store::course_tables());
        result.salvaged = keep::salvage(source.database(), fresh);
    }
    if (result.salvaged->records() == 0)
        return;
    course.finish();
    result.salvaged_to = target;
}

/// An error that is not about what the source holds is one of writing the new course.
void salvage_or_say_why(const std::string& target, CourseReading& source, Result& result)
{
    try {
        salvage_into(target, source, result);
    } catch (const platform::DatabaseError& error) {
        if (error.kind() == platform::DatabaseErrorKind::damaged && !result.salvaged)
            throw;
        throw common::Error("The course " + result.course + " could not be salvaged to " + target + ". " +
                            error.what());
    }
}

int run(const Arguments& arguments, Surroundings& around)
{
    Result result{absolute(arguments.word(0)), {}, {}, {}, {}};
    try {
        CourseReading course(result.course);
        result.findings = course.findings();
        if (result.findings.empty())
            result.records = course.records();
        if (const std::optional<std::string> target = arguments.value("--salvage"))
            salvage_or_say_why(absolute(*target), course, result);
    } catch (const platform::DatabaseError& error) {
        if (error.kind() != platform::DatabaseErrorKind::damaged || result.salvaged)
            throw Refusal("The course " + result.course + " cannot be checked. " + error.what());
        // Nothing of it can be read.
        result.findings = {error.what()};
    }
    if (arguments.has("--json"))
        around.out << json_of(result) << '\n';
    else
        print(result, around.out);
    if (result.salvaged)
        return !result.salvaged_to.empty() && result.salvaged->complete() ? done : not_all_done;
    return result.findings.empty() && !arguments.has("--salvage") ? done : not_all_done;
}

} // namespace

const Verb& check_verb()
{
    static const Verb verb{"check",
                           "Says whether a course is sound, and salvages what can be read of one that is not.",
                           {"COURSE", 1, 1, options},
                           help,
                           run};
    return verb;
}

} // namespace cuedrill::tools
