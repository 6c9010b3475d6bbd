#include "exchange/importer.h"

#include "common/errors.h"

#include <new>
#include <utility>
#include <variant>

namespace cuedrill::exchange {
namespace {

/// More than the fullest course can hold, comments included.
constexpr std::uint64_t longest_file = 64ULL * 1024 * 1024;

} // namespace

Importer::Importer(store::Course& course, bank::RecordBank& bank, platform::Files& files, platform::Clock& clock,
                   const platform::TextCompare& text_compare, std::string path)
    : m_course(course), m_bank(bank), m_files(files), m_clock(clock), m_text_compare(text_compare),
      m_path(std::move(path))
{
}

Importer::~Importer()
{
    take_group_back();
}

Progress Importer::step(std::chrono::milliseconds duration)
{
    m_progress.empty.reset();
    try {
        if (!m_file)
            m_file.emplace(m_files.begin_reading(m_path, longest_file));
        const auto empty = read_for(duration);
        commit();
        m_progress.empty = empty;
    } catch (const common::Error&) {
        keep_what_came_before();
        throw;
    } catch (const std::bad_alloc&) {
        keep_what_came_before();
        throw;
    }
    m_progress.percent = m_file->percent();
    m_progress.has_question = m_file->has_question();
    return m_progress;
}

std::optional<EmptyRecord> Importer::read_for(std::chrono::milliseconds duration)
{
    const double seconds = std::chrono::duration<double>(duration).count();
    const double begun = m_clock.steady_seconds();
    do {
        const QuestionFile::Step found = m_file->step();
        m_progress.finished = found == QuestionFile::Step::end;
        if (m_progress.finished)
            break;
        const auto empty = found == QuestionFile::Step::record ? take(m_file->record()) : std::nullopt;
        if (empty)
            return empty;
    } while (m_clock.steady_seconds() - begun < seconds);
    return std::nullopt;
}

std::optional<EmptyRecord> Importer::take(ReadRecord record)
{
    for (ReadText* part : {&record.question, &record.answer})
        part->text = m_text_compare.nfc(part->text);
    m_report.add_read(record);
    if (record.question.text.empty())
        return EmptyRecord{.number = record.number, .lacks = EmptyRecord::Lacks::question};
    if (record.answer.text.empty())
        return EmptyRecord{.number = record.number, .lacks = EmptyRecord::Lacks::answer};
    hand_over(record);
    return std::nullopt;
}

/// Has the course store the record.
void Importer::hand_over(const ReadRecord& record)
{
    if (!m_group)
        m_group.emplace(m_course);
    ++m_progress.handed_over;
    // Of a text that was cut off, what is left must not be stored as if it were all.
    if (record.question.cut_off != 0 || record.answer.cut_off != 0) {
        m_report.add_refused(record.number, too_long(record));
        return;
    }
    const auto written = m_bank.Write_QA(record.question.text, record.answer.text);
    if (const auto* refusal = std::get_if<bank::Refusal>(&written)) {
        const std::string reason = too_long(record);
        m_report.add_refused(record.number, reason.empty() ? refusal->words + " " + quoted_line(record.question.text) +
                                                                 " " + quoted_line(record.answer.text)
                                                           : reason);
        return;
    }
    ++m_group->added;
    m_group->last_cnt = std::get<common::Int16>(written);
    m_group->last_question = record.question.text;
}

/// Makes what was stored durable.
void Importer::commit()
{
    if (!m_group)
        return;
    commit_group();
    m_progress.stored += m_group->added;
    if (m_group->added != 0)
        m_progress.last_cnt = m_group->last_cnt;
    m_group.reset();
}

/// A group is stored as a whole or not at all, so its last record tells. Whether it is may turn out only after the
/// importer is gone.
void Importer::commit_group()
{
    const auto is_stored = [&course = m_course, side = m_course.Q_FIELD, added = m_group->added,
                            cnt = m_group->last_cnt, question = m_group->last_question] {
        if (added == 0)
            return true;
        const auto last = store::find_record(course.database(), cnt);
        return last && store::side_of(*last, side).text == question;
    };
    try {
        m_group->transaction.commit(
            {.is_stored = is_stored,
             .when_stored_after_all = [&course = m_course, added = m_group->added] { course.record_count += added; }});
    } catch (const store::OutcomeUnknown&) {
        m_progress.unknown = m_group->added;
        throw;
    }
}

/// An error has ended the step: the records before the failing one are stored where the course still takes them.
void Importer::keep_what_came_before()
{
    try {
        commit();
    } catch (const common::Error&) {
        take_group_back();
    } catch (const std::bad_alloc&) {
        take_group_back();
    }
}

void Importer::take_group_back() noexcept
{
    if (!m_group)
        return;
    m_course.record_count -= m_group->added;
    m_group.reset();
}

} // namespace cuedrill::exchange
