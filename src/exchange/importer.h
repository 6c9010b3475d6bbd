#pragma once

#include "bank/record_bank.h"
#include "common/int16.h"
#include "exchange/import_report.h"
#include "exchange/question_file.h"
#include "platform/clock.h"
#include "platform/files.h"
#include "platform/text_compare.h"
#include "store/course.h"
#include "store/course_transaction.h"

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>

namespace cuedrill::exchange {

/// A record of the file that is left out because one of its texts is empty.
struct EmptyRecord {
    enum class Lacks { question, answer };

    std::int64_t number = 0; ///< counted from 1
    Lacks lacks = Lacks::question;
};

/// How far an import is.
struct Progress {
    std::int64_t handed_over = 0; ///< records given to the course, the refused ones included
    std::int64_t stored = 0;      ///< of these, records that are in the course for good
    std::int64_t unknown = 0;     ///< of these, records of which nobody can tell whether they are stored
    common::Int16 last_cnt = 0;   ///< number of the record that was stored last; 0 for none
    /// How much of the file is read; nothing for a file that takes no time.
    std::optional<int> percent{};
    /// The record that the last step has ended at.
    std::optional<EmptyRecord> empty{};
    bool has_question = false; ///< whether any "@Q@" was found
    bool finished = false;     ///< the file is read to its end
};

/// Adds the records of a question text file to the open course, step by step. Between the steps no transaction is open,
/// and what `progress` counts as stored is durable.
class Importer {
public:
    /// A step of this length, with its commit and a repaint, takes less than the tenth of a second after which a window
    /// seems to hang. Each commit waits for the disk, so shorter steps would cost more.
    static constexpr std::chrono::milliseconds usual_step{50};

    /// Reads nothing yet. The file at `path` is opened by the first step.
    Importer(store::Course& course, bank::RecordBank& bank, platform::Files& files, platform::Clock& clock,
             const platform::TextCompare& text_compare, std::string path);
    Importer(const Importer&) = delete;
    Importer& operator=(const Importer&) = delete;
    /// Takes back what a step has left that ended with an error that nobody foresaw.
    ~Importer();

    /// Goes on for about `duration`, or until it meets a record with an empty text, and commits.
    /// @throws common::Error when the file cannot be read, or the course is full or cannot be written; std::bad_alloc.
    ///         What came before is then stored, where the course still takes it. No step may follow.
    Progress step(std::chrono::milliseconds duration);

    [[nodiscard]] const Progress& progress() const { return progress_; }

    /// What has not come into the course as it is in the file, until now.
    [[nodiscard]] const ImportReport& report() const { return report_; }

private:
    /// Records that are stored or taken back together.
    struct Group {
        explicit Group(store::Course& course) : transaction(course) {}

        store::CourseTransaction transaction;
        std::int64_t added = 0;
        common::Int16 last_cnt = 0;
        std::string last_question{};
    };

    [[nodiscard]] std::optional<EmptyRecord> read_for(std::chrono::milliseconds duration);
    [[nodiscard]] std::optional<EmptyRecord> take(ReadRecord record);
    void hand_over(const ReadRecord& record);
    void commit();
    void commit_group();
    void keep_what_came_before();
    void take_group_back() noexcept;

    store::Course& course_;
    bank::RecordBank& bank_;
    platform::Files& files_;
    platform::Clock& clock_;
    const platform::TextCompare& text_compare_;
    std::string path_;

    std::optional<QuestionFile> file_; ///< from the first step on
    std::optional<Group> group_;       ///< what was stored since the last commit
    Progress progress_;
    ImportReport report_;
};

} // namespace cuedrill::exchange
