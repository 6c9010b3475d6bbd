#include "exchange/question_import.h"

#include "common/errors.h"
#include "common/text.h"

#include <new>
#include <utility>

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
/// the commits: it never tells of a record that a crash could still take back. With the commit and the repaint, it is
/// less than the tenth of a second after which a window seems to hang.
constexpr double group_seconds = 0.05;

/// More than the fullest course can hold, comments included.
constexpr std::uint64_t longest_file = 64ULL * 1024 * 1024;

constexpr const char* no_question_found =
    "No \"@Q@\" was found in the file. Each question must be preceded by \"@Q@\", and its answer by \"@A@\".\r\n"
    "Example: @Q@ What is the capital of Alabama?  @A@ Montgomery\r\n";

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
    if (desktop.message_box({.text = "Questions from file \"" + path + "\"will be added to current course (" +
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
    m_stored = m_committed = m_calls = m_unknown = 0;
    m_committed_cnt = m_course.current_cnt;
    m_has_question = false;
    m_report = {};
    m_last_pause = m_services.clock.steady_seconds();
    try {
        read_records(path);
        commit();
        m_status.ShowStatus("", 0);
        m_view.show_all_stored();
        tell_end();
        show_report();
    } catch (const common::Error& error) {
        stop(error.what());
    } catch (const std::bad_alloc& error) {
        stop(common::words_of(error));
    } catch (...) {
        // The end of the program, or an error that nobody foresaw: no transaction may outlive the import.
        drop_uncommitted();
        throw;
    }
}

void QuestionImport::read_records(const std::string& path)
{
    QuestionFile file(m_services.files.begin_reading(path, longest_file));
    for (auto step = file.step(); step != QuestionFile::Step::end; step = file.step()) {
        if (step == QuestionFile::Step::record)
            store_record(file.record());
        pause_when_due(file);
    }
    m_has_question = file.has_question();
}

void QuestionImport::store_record(ReadRecord record)
{
    for (ReadText* part : {&record.question, &record.answer})
        part->text = m_services.text_compare.nfc(part->text);
    m_report.add_read(record);
    const std::string r = std::to_string(record.number);
    if (record.question.text.empty()) {
        commit();
        tell("Question " + r + "  is empty. Record not inserted.");
    } else if (record.answer.text.empty()) {
        commit();
        tell("Answer to question " + r + "  is empty. Record not inserted.");
    } else {
        write(record);
    }
}

void QuestionImport::write(const ReadRecord& record)
{
    if (!m_group)
        m_group.emplace(m_course);
    ++m_calls;
    const std::string reason = refusal(record);
    if (reason.empty()) {
        ++m_stored;
        m_last_question = record.question.text;
    } else {
        m_report.add_refused(record.number, reason);
    }
}

/// Has the course store the record. Why it was not stored, in words for the user; nothing when it was.
std::string QuestionImport::refusal(const ReadRecord& record)
{
    // Of a text that was cut off, what is left must not be stored as if it were all.
    const bool whole = record.question.cut_off == 0 && record.answer.cut_off == 0;
    if (whole && m_bank.Write_QA(record.question.text, record.answer.text))
        return {};
    const std::string reason = too_long(record);
    return reason.empty()
               ? m_bank.last_refusal() + " " + quoted_line(record.question.text) + " " + quoted_line(record.answer.text)
               : reason;
}

/// Commits, shows how far the import is, and lets the window paint, many times a second.
void QuestionImport::pause_when_due(const QuestionFile& file)
{
    if (m_services.clock.steady_seconds() - m_last_pause < group_seconds)
        return;
    commit();
    if (const auto percent = file.percent())
        m_status.ShowStatus(progress() + ", " + std::to_string(*percent) + " % of the file read", 0);
    m_services.desktop.pump();
    m_last_pause = m_services.clock.steady_seconds();
}

/// Makes what was stored durable, then shows it.
void QuestionImport::commit()
{
    if (!m_group)
        return;
    commit_group();
    m_group.reset();
    if (m_committed == m_stored)
        return;
    m_committed = m_stored;
    m_committed_cnt = m_course.current_cnt;
    show_progress();
}

/// A group is stored as a whole or not at all, so its last record tells.
void QuestionImport::commit_group()
{
    const std::int64_t added = m_stored - m_committed;
    const auto is_stored = [this, added, cnt = m_course.current_cnt, question = m_last_question] {
        const auto last = store::find_record(m_course.database(), cnt);
        return added == 0 || (last && store::side_of(*last, m_course.Q_FIELD).text == question);
    };
    try {
        m_group->commit(
            {.is_stored = is_stored, .when_stored_after_all = [this, added] { m_course.record_count += added; }});
    } catch (const store::OutcomeUnknown&) {
        m_unknown = added;
        throw;
    }
}

std::string QuestionImport::progress() const
{
    return "Importing: " + std::to_string(m_committed) + " questions and answers stored";
}

void QuestionImport::show_progress()
{
    m_status.ShowStatus(progress(), 0);
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
    } catch (const std::bad_alloc&) {
        drop_uncommitted();
    }
    m_status.ShowStatus("", 0);
    m_view.show_all_stored();
    m_services.desktop.message_box({.text = "The import has stopped.\r\n\r\n" + reason + "\r\n\r\n" +
                                            std::to_string(m_committed) + " questions and answers are stored." +
                                            (m_unknown == 0 ? ""
                                                            : " Of " + std::to_string(m_unknown) +
                                                                  " more it is not known whether they are stored."),
                                    .icon = BoxIcon::exclamation});
    show_report();
}

void QuestionImport::tell_end()
{
    m_services.desktop.message_box({.text = std::to_string(m_calls) + " questions and answers insterted.",
                                    .details = m_has_question ? "" : no_question_found});
}

void QuestionImport::show_report()
{
    if (const auto box = m_report.box())
        m_services.desktop.message_box(*box);
}

void QuestionImport::tell(const std::string& text)
{
    m_services.desktop.message_box({.text = text});
}

} // namespace cuedrill::exchange
