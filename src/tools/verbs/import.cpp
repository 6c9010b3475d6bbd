#include "bank/new_records.h"
#include "common/errors.h"
#include "common/text.h"
#include "exchange/import_words.h"
#include "tools/importing.h"
#include "tools/opened_course.h"
#include "tools/progress_line.h"
#include "tools/verbs.h"

#include <array>
#include <ostream>
#include <string>
#include <utility>

namespace cuedrill::tools {
namespace {

constexpr std::array<Option, 10> options{
    {{"--dry-run", "", "Only says what would be imported."},
     {"--skip-duplicates", "", "Leaves out records whose question the course has already, or a record before them."},
     {"--columns", "A,B", "The question and the answer: names or numbers of columns or fields."},
     {"--encoding", "E", "The encoding of a table or text export, such as windows-1252; otherwise it is found out."},
     {"--format", "F",
      "text (a question text), table, anki-text, anki-package, mnemosyne-text or kvtml; otherwise the file's name "
      "tells."},
     {"--separator", "C", "The character between the columns of a table, or tab."},
     {"--quote", "C", "The quotation mark of a table, or none."},
     {"--header", "", "The first line of a table has the names of the columns."},
     {"--no-header", "", "The first line of a table is a record."},
     {"--truncate", "", "Cuts texts to the 200 characters that a course holds; otherwise such records are left out."}}};

constexpr std::string_view help =
    "Reads question texts, tables (.csv, .tsv, .tab), flashcard packages (.apkg, .colpkg), their text exports, and\n"
    "vocabularies (.kvtml). Pictures and sounds are left out, and so is what another program knows of your learning.\n"
    "A copy of the course is made first. Exit code 1: nothing was imported, or not all of the file.\n";

char separator_of(const std::string& text)
{
    if (text == "tab" || text == "TAB" || text == "\\t")
        return '\t';
    if (text.size() != 1)
        throw UsageError("A separator is one character, or tab.");
    return text.front();
}

char quote_of(const std::string& text)
{
    if (text == "none")
        return '\0';
    if (text.size() != 1)
        throw UsageError("A quotation mark is one character, or none.");
    return text.front();
}

decks::TableOptions table_of(const Arguments& arguments)
{
    decks::TableOptions table;
    if (const auto quote = arguments.value("--quote"))
        table.quote = quote_of(*quote);
    if (const auto separator = arguments.value("--separator"))
        table.separator = separator_of(*separator);
    if (const auto encoding = arguments.value("--encoding"))
        table.encoding = decks::encoding_named(*encoding);
    if (arguments.has("--header") && arguments.has("--no-header"))
        throw UsageError("Give --header or --no-header.");
    if (arguments.has("--header") || arguments.has("--no-header"))
        table.has_header = arguments.has("--header");
    return table;
}

void check_format(const SourceChoice& choice)
{
    if (!choice.options.format || *choice.options.format == question_text_format)
        return;
    std::string names(question_text_format);
    for (const std::string& name : decks::deck_formats()) {
        if (common::equal_ascii(name, *choice.options.format))
            return;
        names += ", " + name;
    }
    throw UsageError("There is no format " + *choice.options.format + ". Known are " + names + ".");
}

/// @throws UsageError for what can be known to be wrong without the file.
SourceChoice choice_of(const Arguments& arguments)
{
    SourceChoice choice{.path = arguments.word(1)};
    try {
        choice.options = {.format = arguments.value("--format"), .table = table_of(arguments)};
        if (const auto columns = arguments.value("--columns"))
            choice.records.fields = decks::field_choice(*columns);
    } catch (const common::Error& error) {
        throw UsageError(error.what());
    }
    choice.records.truncate = arguments.has("--truncate");
    check_format(choice);
    for (const std::string_view option :
         {"--columns", "--encoding", "--separator", "--quote", "--header", "--no-header"}) {
        if (arguments.has(option) && is_question_text(choice))
            throw UsageError("A question text has no " + std::string(option) + ". --format says what the file is.");
    }
    return choice;
}

/// What a dry run has found.
struct Found {
    std::int64_t good = 0;
    exchange::ImportReport report;
};

Found look_through(exchange::RecordSource& source, Surroundings& around)
{
    Found found;
    ProgressLine line(around);
    for (auto step = source.step(); step != exchange::RecordSource::Step::end; step = source.step()) {
        line.show(source.percent());
        if (step != exchange::RecordSource::Step::record)
            continue;
        const exchange::ReadRecord& record = source.record();
        found.report.add_read(record);
        const bool is_empty = record.question.text.empty() || record.answer.text.empty();
        const std::string words = is_empty ? "One of its texts is empty." : exchange::too_long(record);
        if (words.empty())
            ++found.good;
        else
            found.report.add_refused(record, words);
    }
    line.clear();
    return found;
}

int run_dry(exchange::RecordSource& source, Surroundings& around)
{
    const Found found = look_through(source, around);
    around.out << found.good << " questions and answers would be imported.\n";
    if (!source.has_question())
        around.out << source.nothing_found();
    around.out << source.left_out();
    const std::string summary = found.report.summary();
    if (!summary.empty())
        around.out << summary << '\n' << found.report.lines();
    return found.good > 0 && summary.empty() ? done : not_all_done;
}

int run(const Arguments& arguments, Surroundings& around)
{
    const SourceChoice choice = choice_of(arguments);
    const bool dry = arguments.has("--dry-run");
    OpenedCourse opened(arguments.word(0), dry ? OpenedCourse::For::reading : OpenedCourse::For::writing, around);
    if (!opened.files().is_regular_file(choice.path))
        throw Refusal("There is no file " + choice.path + ".");
    if (opened.files().is_same_file(choice.path, opened.course().db_path))
        throw Refusal("The file " + choice.path + " is the course itself.");
    const RecordSources sources(opened.files(), opened.text_compare());
    const auto open = [&]() -> std::unique_ptr<exchange::RecordSource> {
        auto source = sources.open(choice);
        if (!arguments.has("--skip-duplicates"))
            return source;
        return std::make_unique<NewQuestions>(std::move(source), opened.course(), opened.text_compare());
    };
    if (dry)
        return run_dry(*open(), around);
    opened.copy_first();
    exchange::Importer importer(opened.course(), opened.clock(), opened.text_compare(), open);
    const Imported imported = run_import(importer, around);
    return imported.stored > 0 && imported.all ? done : not_all_done;
}

} // namespace

const Verb& import_verb()
{
    static const Verb verb{
        "import", "Adds the records of a file, also of another program.", {"COURSE FILE", 2, 2, options}, help, run};
    return verb;
}

} // namespace cuedrill::tools
