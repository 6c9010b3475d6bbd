#include "exchange/importer.h"

#include "common/errors.h"
#include "exchange/question_file.h"

#include <new>
#include <utility>
#include <variant>

namespace cuedrill::exchange {

std::unique_ptr<RecordSource> open_question_text(const platform::Files& files, const std::string& path)
{
    return std::make_unique<QuestionFile>(files.begin_reading(path, longest_file));
}

Importer::Importer(store::Course& course, platform::Clock& clock, const platform::TextCompare& text_compare, Open open)
    : course_(course), clock_(clock), text_compare_(text_compare), open_(std::move(open))
{
}

Importer::Importer(store::Course& course, platform::Files& files, platform::Clock& clock,
                   const platform::TextCompare& text_compare, std::string path)
    : Importer(course, clock, text_compare,
               [&files, path = std::move(path)] { return open_question_text(files, path); })
{
}

Progress Importer::step(std::chrono::milliseconds duration)
{
    progress_.empty.reset();
    try {
        if (!source_)
            source_ = open_();
        const auto empty = read_for(duration);
        commit();
        progress_.empty = empty;
    } catch (const common::Error&) {
        keep_what_came_before();
        throw;
    } catch (const std::bad_alloc&) {
        keep_what_came_before();
        throw;
    }
    progress_.percent = source_->percent();
    progress_.has_question = source_->has_question();
    return progress_;
}

std::optional<EmptyRecord> Importer::read_for(std::chrono::milliseconds duration)
{
    const double seconds = std::chrono::duration<double>(duration).count();
    const double begun = clock_.steady_seconds();
    do {
        const RecordSource::Step found = source_->step();
        progress_.finished = found == RecordSource::Step::end;
        if (progress_.finished)
            break;
        const auto empty = found == RecordSource::Step::record ? take(source_->record()) : std::nullopt;
        if (empty)
            return empty;
    } while (clock_.steady_seconds() - begun < seconds);
    return std::nullopt;
}

std::optional<EmptyRecord> Importer::take(ReadRecord record)
{
    for (ReadText* part : {&record.question, &record.answer})
        part->text = text_compare_.nfc(part->text);
    report_.add_read(record);
    if (record.question.text.empty())
        return EmptyRecord{.number = record.number, .lacks = EmptyRecord::Lacks::question, .place = record.place};
    if (record.answer.text.empty())
        return EmptyRecord{.number = record.number, .lacks = EmptyRecord::Lacks::answer, .place = record.place};
    hand_over(record);
    return std::nullopt;
}

/// Stores the record in the course, or notes why it was refused.
void Importer::hand_over(const ReadRecord& record)
{
    if (!group_)
        group_.emplace(course_, store::StoredChange::What::imported);
    ++progress_.handed_over;
    // A truncated text must not be stored as if it were complete.
    if (record.question.cut_off != 0 || record.answer.cut_off != 0) {
        report_.add_refused(record, too_long(record));
        return;
    }
    const auto written = group_->Write_QA(record.question.text, record.answer.text);
    if (const auto* refusal = std::get_if<bank::Refusal>(&written)) {
        const std::string reason = too_long(record);
        report_.add_refused(record, reason.empty() ? refusal->words + " " + quoted_line(record.question.text) + " " +
                                                         quoted_line(record.answer.text)
                                                   : reason);
    }
}

/// Commits the current group.
void Importer::commit()
{
    if (!group_)
        return;
    try {
        group_->commit();
    } catch (const store::OutcomeUnknown&) {
        progress_.unknown = group_->count();
        throw;
    }
    progress_.stored += group_->count();
    if (group_->count() != 0)
        progress_.last_cnt = group_->last_cnt();
    group_.reset();
}

/// Commits the records before the failing one, if the course still can, after an error has ended the step.
void Importer::keep_what_came_before()
{
    try {
        commit();
    } catch (const common::Error&) {
        group_.reset();
    } catch (const std::bad_alloc&) {
        group_.reset();
    }
}

} // namespace cuedrill::exchange
