#include "drill/question_import.h"

#include "common/errors.h"
#include "exchange/decks/deck_preview.h"
#include "exchange/import_words.h"

#include <cstddef>
#include <new>
#include <utility>

namespace cuedrill::drill {
namespace {

using exchange::Importer;
using exchange::Progress;
using platform::BoxAnswer;
using platform::BoxButtons;
using platform::BoxIcon;

constexpr const char* explanation =
    "This function will import questions and answers form a text file and put them in the current course.\r\n"
    "In the text file each question must be preceded by '@Q@', and the related answer by '@A@'\r\n"
    "Questions and answers may be on different lines and consist of more than one line each.\r\n"
    "Spaces, newline and TAB characters at beginning or end of questions and answers are trimmed.\r\n"
    "Lines beginning with /*/ are ignored.\r\n"
    "Example 1: @Q@ What is the capital of Alabama?  @A@ Montgomery\r\n"
    "Example 2:\r\n"
    "@Q@\r\n"
    "What is the capital of Alabama?\r\n"
    "@A@\r\n"
    "Montgomery\r\n"
    "Do you wish to continue?";

/// Rows of a deck that are shown to choose its fields by.
constexpr std::size_t rows_of_preview = 5;

constexpr const char* text_files = "Text file (*.txt)|*.txt|All files (*.*)|*.*";

std::string words_of(const Progress& progress)
{
    return "Importing: " + std::to_string(progress.stored) + " questions and answers stored";
}

} // namespace

void QuestionImport::Import_questions_and_answers()
{
    platform::Desktop& desktop = services_.desktop;
    if (desktop.message_box({.text = explanation,
                             .buttons = BoxButtons::yes_no,
                             .icon = BoxIcon::question,
                             .default_button = BoxAnswer::no,
                             .title = "Importing questions and answers from text file"}) != BoxAnswer::yes)
        return;
    if (flags_.editing()) {
        tell("This function cannot be used while in insert or modify mode. Press ESC to cancel insert or edit.");
        return;
    }
    if (!course_.is_open()) {
        tell("You should create a course first");
        return;
    }
    const std::string path =
        desktop.open_file_dialog({.initial_folder = services_.folder.initial(), .filter = text_files}).path;
    if (path.empty())
        return;
    services_.folder.chosen(path);
    if (!may_import(path))
        return;
    if (desktop.message_box({.text = "Questions from file \"" + path + "\"will be added to current course (" +
                                     course_.params.course_title + ").\r\nDo you wish to continue?",
                             .buttons = BoxButtons::yes_no,
                             .icon = BoxIcon::question}) != BoxAnswer::yes)
        return;
    import_file(path);
}

bool QuestionImport::may_import(const std::string& path)
{
    const platform::Files& files = services_.files;
    if (!files.exists(path))
        tell("File not found");
    else if (files.is_same_file(path, course_.db_path))
        tell("The file " + path + " is the open course itself. Choose a text file.");
    else if (!files.is_regular_file(path))
        tell("The file " + path + " is not an ordinary file. Choose a text file.");
    else
        return true;
    return false;
}

void QuestionImport::import_file(const std::string& path)
{
    const std::optional<Importer::Open> open = opening_of(path);
    if (!open)
        return;
    services_.copies.before_change();
    Importer importer(course_, services_.clock, services_.text_compare, *open);
    shown_ = 0;
    try {
        run(importer);
        show_all();
        services_.desktop.message_box(
            {.text = exchange::end_words(importer.progress()), .details = exchange::end_details(importer)});
        tell_report(importer.report());
    } catch (const common::Error& error) {
        stop(importer, error.what());
    } catch (const std::bad_alloc& error) {
        stop(importer, common::words_of(error));
    }
}

/// How the file is opened; std::nullopt when the user does not want to import it after all.
std::optional<Importer::Open> QuestionImport::opening_of(const std::string& path)
{
    if (!decks::is_deck_name(path))
        return [this, path] { return exchange::open_question_text(services_.files, path); };
    const std::optional<decks::RecordChoice> choice = choice_of(path);
    if (!choice)
        return std::nullopt;
    return [this, path, choice = *choice] { return open_deck(path, choice); };
}

/// Has the user choose the two fields of a record, if there are more than two.
/// @return std::nullopt after a cancel.
std::optional<decks::RecordChoice> QuestionImport::choice_of(const std::string& path)
{
    decks::DeckPreview preview;
    try {
        preview =
            decks::preview_of(*decks::open_deck(path, {}, services_.files, services_.deck_tools).deck, rows_of_preview);
    } catch (const common::Error&) {
        // The import meets the same error, and reports it.
        return decks::RecordChoice{};
    }
    if (preview.names.size() <= 2)
        return decks::RecordChoice{};
    const auto chosen = services_.desktop.columns_box({.title = "Importing",
                                                       .prompt = "Each record of this file has more than two texts. "
                                                                 "Which of them are the question and the answer?",
                                                       .first_label = "Question",
                                                       .second_label = "Answer",
                                                       .names = preview.names,
                                                       .rows = preview.rows});
    if (!chosen)
        return std::nullopt;
    return decks::RecordChoice{.fields = decks::FieldChoice{.question = preview.names.at(chosen->first),
                                                            .answer = preview.names.at(chosen->second)}};
}

std::unique_ptr<exchange::RecordSource> QuestionImport::open_deck(const std::string& path,
                                                                  const decks::RecordChoice& choice) const
{
    decks::OpenedDeck opened = decks::open_deck(path, {}, services_.files, services_.deck_tools);
    return std::make_unique<decks::DeckRecords>(std::move(opened.deck), std::move(opened.looked_for),
                                                services_.text_compare, choice);
}

/// Runs the steps of the import and lets the window repaint between them.
void QuestionImport::run(Importer& importer)
{
    for (;;) {
        const Progress progress = importer.step(Importer::usual_step);
        show(progress);
        if (progress.empty)
            tell(exchange::empty_words(*progress.empty));
        if (progress.finished)
            return;
        if (progress.percent)
            status_.ShowStatus(words_of(progress) + ", " + std::to_string(*progress.percent) + " % of the file read",
                               0);
        services_.desktop.pump();
    }
}

/// Shows the last record if there is a new one. Only records that are durably stored are shown.
void QuestionImport::show(const Progress& progress)
{
    if (progress.stored == shown_)
        return;
    shown_ = progress.stored;
    flags_.clear();
    status_.ShowStatus(words_of(progress), 0);
    refresh_counts_or_withdraw(statistics_, display_);
    display_.show_record(progress.last_cnt);
}

/// Reports the error that ended the import.
void QuestionImport::stop(const Importer& importer, const std::string& reason)
{
    try {
        show(importer.progress());
    } catch (const common::Error&) {
        // The box below reports the error that came first.
    } catch (const std::bad_alloc&) {
        // Likewise.
    }
    show_all();
    services_.desktop.message_box(
        {.text = exchange::stop_words(reason, importer.progress()), .icon = BoxIcon::exclamation});
    tell_report(importer.report());
}

/// After the last record: clears the status line and updates the list if it is visible.
void QuestionImport::show_all()
{
    status_.ShowStatus("", 0);
    last_list_.rebuild_shown_list();
}

void QuestionImport::tell_report(const exchange::ImportReport& report)
{
    const std::string summary = report.summary();
    if (!summary.empty())
        services_.desktop.message_box({.text = summary, .icon = BoxIcon::exclamation, .details = report.lines()});
}

void QuestionImport::tell(const std::string& text)
{
    services_.desktop.message_box({.text = text});
}

} // namespace cuedrill::drill
