#include "exchange/question_import.h"

#include "common/errors.h"
#include "common/text.h"
#include "exchange/question_text.h"
#include "exchange/text_decoding.h"

namespace cuedrill::exchange {
namespace {

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

constexpr const char* text_files = "Text file (*.txt)|*.txt|All files (*.*)|*.*";

/// Each commit waits for the disk, so records are committed in groups of this length, in seconds. The display follows
/// the commits: it never tells of a record that a crash could still take back.
constexpr double group_seconds = 0.25;

/// More than the fullest course can hold, comments included, and little enough to be held in memory.
constexpr std::uint64_t longest_file = 64ULL * 1024 * 1024;

/// The clock is looked at once in so many lines, where they complete no record.
constexpr int lines_at_a_time = 64;

/// A refused question is told whole, unless it is far longer than any that fits.
constexpr std::size_t shown_question_length = 1000;

std::string quoted(const std::string& text)
{
    return "\"" + text + "\"";
}

std::string one_line(const std::string& text)
{
    std::string line = common::replace_all(text, common::cr_lf, " ");
    if (common::code_points(line) > shown_question_length)
        line = std::string(common::first_code_points(line, shown_question_length)) + "...";
    return line;
}

} // namespace

QuestionImport::QuestionImport(store::Course& course, bank::RecordBank& bank, const bank::EditFlags& flags,
                               bank::StoredRecordView& view, scheduler::StatusLine& status, const Services& services)
    : m_course(course), m_bank(bank), m_flags(flags), m_view(view), m_status(status), m_services(services)
{
}

void QuestionImport::Import_questions_and_answers()
{
    platform::Desktop& desktop = m_services.desktop;
    if (desktop.message_box({.text = explanation,
                             .buttons = BoxButtons::yes_no,
                             .icon = BoxIcon::question,
                             .default_button = BoxAnswer::no,
                             .title = "Importing questions and answers from text file"}) != BoxAnswer::yes)
        return;
    if (m_flags.editing()) {
        tell("This function cannot be used while in insert or modify mode. Press ESC to cancel insert or edit.");
        return;
    }
    if (!m_course.is_open()) {
        tell("You should create a course first");
        return;
    }
    const std::string path = desktop.open_file_dialog({.filter = text_files}).path;
    if (path.empty() || !may_import(path))
        return;
    if (desktop.message_box({.text = "Questions from file " + quoted(path) + "will be added to current course (" +
                                     m_course.params.course_title + ").\r\nDo you wish to continue?",
                             .buttons = BoxButtons::yes_no,
                             .icon = BoxIcon::question}) != BoxAnswer::yes)
        return;
    import_file(path);
}

bool QuestionImport::may_import(const std::string& path)
{
    const platform::Files& files = m_services.files;
    if (!files.exists(path))
        tell("File not found");
    else if (files.is_same_file(path, m_course.db_path))
        tell("The file " + path + " is the open course itself. Choose a text file.");
    else if (!files.is_regular_file(path))
        tell("The file " + path + " is not an ordinary file. Choose a text file.");
    else
        return true;
    return false;
}

void QuestionImport::import_file(const std::string& path)
{
    m_stored = m_committed = m_calls = 0;
    m_committed_cnt = m_course.current_cnt;
    m_refused.clear();
    m_last_pause = m_services.clock.steady_seconds();
    try {
        read_records(path);
        commit();
        m_status.ShowStatus("", 0);
        m_view.show_all_stored();
        tell(std::to_string(m_calls) + " questions and answers insterted.");
        show_refused();
    } catch (const common::Error& error) {
        stop(error.what());
    } catch (...) {
        // The end of the program, or an error that nobody foresaw: no transaction may outlive the import.
        drop_uncommitted();
        throw;
    }
}

void QuestionImport::read_records(const std::string& path)
{
    const std::string text = m_services.text_compare.nfc(decode_text(m_services.files.read(path, longest_file)));
    const auto sink = [this](std::int64_t number, std::string_view question, std::string_view answer) {
        store_record(number, question, answer);
    };
    LineReader lines(text);
    QuestionTextReader reader;
    int line_number = 0;
    while (const auto line = lines.next()) {
        reader.add_line(*line, sink);
        if (++line_number % lines_at_a_time == 0)
            pause_when_due();
    }
    reader.finish(sink);
}

void QuestionImport::store_record(std::int64_t number, std::string_view question, std::string_view answer)
{
    const std::string r = std::to_string(number);
    if (question.empty()) {
        commit();
        tell("Question " + r + "  is empty. Record not inserted.");
    } else if (answer.empty()) {
        commit();
        tell("Answer to question " + r + "  is empty. Record not inserted.");
    } else {
        write(number, std::string(question), std::string(answer));
    }
}

void QuestionImport::write(std::int64_t number, const std::string& question, const std::string& answer)
{
    if (!m_group)
        m_group.emplace(m_course.database());
    ++m_calls;
    if (m_bank.Write_QA(question, answer))
        ++m_stored;
    else
        m_refused.push_back({.number = number, .reason = m_bank.last_refusal(), .question = question});
    pause_when_due();
}

/// Commits, shows how far the import is, and lets the window paint, a few times a second.
void QuestionImport::pause_when_due()
{
    const double now = m_services.clock.steady_seconds();
    if (now - m_last_pause < group_seconds)
        return;
    m_last_pause = now;
    commit();
    m_services.desktop.pump();
}

/// Makes what was stored durable, then shows it.
void QuestionImport::commit()
{
    if (!m_group)
        return;
    m_group->commit();
    m_group.reset();
    if (m_committed == m_stored)
        return;
    m_committed = m_stored;
    m_committed_cnt = m_course.current_cnt;
    show_progress();
}

void QuestionImport::show_progress()
{
    m_status.ShowStatus("Importing: " + std::to_string(m_committed) + " questions and answers stored", 0);
    m_view.show_stored_record();
}

void QuestionImport::drop_uncommitted() noexcept
{
    m_group.reset();
    m_course.record_count -= m_stored - m_committed;
    m_stored = m_committed;
    m_course.current_cnt = m_committed_cnt;
}

/// Ends the import on an error. What was stored before the failing record is kept where the course still takes it.
void QuestionImport::stop(const std::string& reason)
{
    try {
        commit();
    } catch (const common::Error&) {
        drop_uncommitted();
    }
    m_status.ShowStatus("", 0);
    m_view.show_all_stored();
    m_services.desktop.message_box({.text = "The import has stopped.\r\n\r\n" + reason + "\r\n\r\n" +
                                            std::to_string(m_committed) + " questions and answers are stored.",
                                    .icon = BoxIcon::exclamation});
    show_refused();
}

void QuestionImport::show_refused()
{
    if (m_refused.empty())
        return;
    std::string lines;
    for (const Refused& refused : m_refused) {
        lines += "Question " + std::to_string(refused.number) + ": " + refused.reason + " " +
                 quoted(one_line(refused.question));
        lines += common::cr_lf;
    }
    m_services.desktop.message_box({.text = "Refused, and not stored: " + std::to_string(m_refused.size()),
                                    .icon = BoxIcon::exclamation,
                                    .details = lines});
}

void QuestionImport::tell(const std::string& text)
{
    m_services.desktop.message_box({.text = text});
}

} // namespace cuedrill::exchange
