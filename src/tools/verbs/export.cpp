#include "common/errors.h"
#include "common/text.h"
#include "exchange/decks/table_writer.h"
#include "exchange/decks/vocabulary_writer.h"
#include "exchange/question_text_writer.h"
#include "tools/opened_course.h"
#include "tools/printed_file.h"
#include "tools/verbs.h"

#include <algorithm>
#include <array>
#include <memory>
#include <ostream>
#include <string>

namespace cuedrill::tools {
namespace {

constexpr std::array<Option, 4> options{
    {{"--format", "F",
      "text (a question text), csv, tsv or kvtml; otherwise the ending of FILE tells, and text if it does not."},
     {"--numbered", "", "Adds the number of each record; in a question text they are counted from 1."},
     {"--statistics", "", "Adds attempts, failures, level and dates of both directions to a table."},
     {"--replace", "", "Replaces FILE if it exists."}}};

constexpr std::string_view help =
    "All records are written in the order of their numbers. FILE is - for the output. A text that FILE cannot hold as "
    "it\n"
    "is, so that an import would not bring it back, is listed. Exit code 1: there is one, or no record at all.\n";

/// What a writer tells.
struct Written {
    std::int64_t count = 0;
    std::string changed{}; ///< lines about records that an import would not bring back unchanged
};

/// What a writer needs.
struct Work {
    platform::Replacement& file;
    platform::Recordset& rows;
    OpenedCourse& opened;
    const Arguments& arguments;
};

Written write_text(const Work& work)
{
    exchange::ReturnCheck check(work.opened.text_compare());
    const exchange::QuestionTextForm form{.course_title = work.opened.course().params.course_title,
                                          .written = work.opened.now(),
                                          .numbered = work.arguments.has("--numbered")};
    const std::int64_t count = exchange::write_question_text(work.file, work.rows, form, check);
    return {.count = count, .changed = check.lines()};
}

Written write_separated(const Work& work, char separator)
{
    return {.count = decks::write_table(work.file, work.rows,
                                        {.separator = separator,
                                         .numbered = work.arguments.has("--numbered"),
                                         .statistics = work.arguments.has("--statistics")})};
}

Written write_csv(const Work& work)
{
    return write_separated(work, ',');
}

Written write_tsv(const Work& work)
{
    return write_separated(work, '\t');
}

Written write_kvtml(const Work& work)
{
    decks::WrittenVocabulary written = decks::write_vocabulary(
        work.file, work.rows, {.course_title = work.opened.course().params.course_title, .written = work.opened.now()});
    return {.count = written.count, .changed = std::move(written.lines)};
}

/// A format. A further one is a line of the table below.
struct Format {
    std::string_view name;
    bool is_table; ///< whether it has room for statistics
    Written (*write)(const Work& work);
};

constexpr std::array<Format, 4> formats{
    {{"text", false, write_text}, {"csv", true, write_csv}, {"tsv", true, write_tsv}, {"kvtml", false, write_kvtml}}};

const Format* format_named(std::string_view name)
{
    const auto* const found = std::find_if(
        formats.begin(), formats.end(), [&](const Format& format) { return common::equal_ascii(format.name, name); });
    return found == formats.end() ? nullptr : found;
}

/// @throws UsageError
const Format& format_of(const Arguments& arguments)
{
    if (const auto name = arguments.value("--format")) {
        if (const Format* const format = format_named(*name))
            return *format;
        throw UsageError("There is no format " + *name + ".");
    }
    const std::string file = arguments.word(1);
    const std::size_t dot = file.rfind('.');
    const Format* const format =
        dot == std::string::npos ? nullptr : format_named(std::string_view(file).substr(dot + 1));
    return format != nullptr ? *format : formats.front();
}

Written write_to(platform::Replacement& file, const Format& format, OpenedCourse& opened, const Arguments& arguments)
{
    const auto rows = opened.course().database().open_recordset("Select * from qa order by cnt");
    Written written = format.write({file, *rows, opened, arguments});
    file.finish();
    return written;
}

int run(const Arguments& arguments, Surroundings& around)
{
    const Format& format = format_of(arguments);
    if (arguments.has("--statistics") && !format.is_table)
        throw UsageError("Only a table has room for statistics.");
    OpenedCourse opened(arguments.word(0), OpenedCourse::For::reading, around);
    const std::string target = arguments.word(1);
    Written written;
    if (target == "-") {
        PrintedFile printed(around.out);
        written = write_to(printed, format, opened, arguments);
    } else {
        const std::string path = opened.files().absolute(target);
        if (opened.files().is_same_file(path, opened.course().db_path))
            throw Refusal("The file " + path + " is the course itself.");
        if (opened.files().exists(path) && !arguments.has("--replace"))
            throw Refusal("There is a file " + path + " already. --replace replaces it.");
        written = write_to(*opened.files().begin_replacement(path), format, opened, arguments);
        around.out << written.count << " records were written to " << path << ".\n";
    }
    if (!written.changed.empty())
        around.err << "An import would not bring back unchanged:\n" << written.changed;
    return written.count > 0 && written.changed.empty() ? done : not_all_done;
}

} // namespace

const Verb& export_verb()
{
    static const Verb verb{
        "export", "Writes all records to a file for other programs.", {"COURSE FILE", 2, 2, options}, help, run};
    return verb;
}

} // namespace cuedrill::tools
