#pragma once

#include "bank/edit_flags.h"
#include "bank/record_bank.h"
#include "bank/stored_record_view.h"
#include "exchange/import_report.h"
#include "exchange/question_file.h"
#include "platform/clock.h"
#include "platform/desktop.h"
#include "platform/files.h"
#include "platform/text_compare.h"
#include "scheduler/ports.h"
#include "store/course.h"
#include "store/course_transaction.h"

#include <cstdint>
#include <optional>
#include <string>

namespace cuedrill::exchange {

/// Adds the records of a question text file to the open course.
class QuestionImport {
public:
    struct Services {
        platform::Files& files;
        platform::Clock& clock;
        platform::Desktop& desktop;
        const platform::TextCompare& text_compare;
    };

    QuestionImport(store::Course& course, bank::RecordBank& bank, const bank::EditFlags& flags,
                   bank::StoredRecordView& view, scheduler::StatusLine& status, const Services& services);

    /// The command: explains, asks for the file, asks again, and imports it. Every failure is told in a box; what was
    /// stored until then stays.
    void Import_questions_and_answers();

    /// Imports the file at `path` and tells the result.
    void import_file(const std::string& path);

private:
    [[nodiscard]] bool may_import(const std::string& path);
    void read_records(const std::string& path);
    void store_record(ReadRecord record);
    void write(const ReadRecord& record);
    [[nodiscard]] std::string refusal(const ReadRecord& record);
    void pause_when_due(const QuestionFile& file);
    void commit();
    void commit_group();
    void drop_uncommitted() noexcept;
    [[nodiscard]] std::string progress() const;
    void show_progress();
    void stop(const std::string& reason);
    void tell_end();
    void show_report();
    void tell(const std::string& text);

    store::Course& m_course;
    bank::RecordBank& m_bank;
    const bank::EditFlags& m_flags;
    bank::StoredRecordView& m_view;
    scheduler::StatusLine& m_status;
    Services m_services;

    // The import that is running.
    std::optional<store::CourseTransaction> m_group; ///< records stored since the last commit
    double m_last_pause = 0;                         ///< seconds of the steady clock
    std::int64_t m_stored = 0;                       ///< records stored, the uncommitted ones included
    std::int64_t m_committed = 0;
    common::Int16 m_committed_cnt = 0; ///< current record at the last commit
    std::int64_t m_unknown = 0;        ///< records of which nobody can tell whether they are stored
    std::string m_last_question;       ///< of the last record stored
    std::int64_t m_calls = 0;          ///< records handed to the course, the refused ones included
    bool m_has_question = false;       ///< whether the file has any
    ImportReport m_report;
};

} // namespace cuedrill::exchange
