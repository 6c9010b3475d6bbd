#pragma once

#include "bank/new_records.h"
#include "common/int16.h"
#include "exchange/import_report.h"
#include "exchange/record_source.h"
#include "platform/clock.h"
#include "platform/files.h"
#include "platform/text_compare.h"
#include "store/course.h"

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace cuedrill::exchange {

/// A record of the file that is skipped because one of its texts is empty.
struct EmptyRecord {
    enum class Lacks { question, answer };

    std::int64_t number = 0; ///< counted from 1
    Lacks lacks = Lacks::question;
    std::string place{}; ///< as in ReadRecord
};

/// Progress of an import.
struct Progress {
    std::int64_t handed_over = 0; ///< records given to the course, including refused ones
    std::int64_t stored = 0;      ///< records durably stored
    std::int64_t unknown = 0;     ///< records whose outcome is unknown
    common::Int16 last_cnt = 0;   ///< number of the record stored last; 0 if none
    /// How much of the file has been read, in percent; std::nullopt for a small file.
    std::optional<int> percent{};
    /// The record with an empty text that ended the last step.
    std::optional<EmptyRecord> empty{};
    bool has_question = false; ///< whether anything that begins a record was found
    bool finished = false;     ///< the whole file has been read
};

/// Adds the records of a file to the open course, step by step. Between steps no transaction is open, and
/// what `progress` counts as stored is durable.
class Importer {
public:
    /// A step of this length, with its commit and a repaint, takes less than a tenth of a second, after which a window
    /// seems to hang. Each commit waits for the disk, so shorter steps would cost more.
    static constexpr std::chrono::milliseconds usual_step{50};

    /// Opens the file. May throw common::Error.
    using Open = std::function<std::unique_ptr<RecordSource>()>;

    /// Reads nothing yet; the first step calls `open`.
    Importer(store::Course& course, platform::Clock& clock, const platform::TextCompare& text_compare, Open open);
    /// Imports the question text file at `path`.
    Importer(store::Course& course, platform::Files& files, platform::Clock& clock,
             const platform::TextCompare& text_compare, std::string path);
    Importer(const Importer&) = delete;
    Importer& operator=(const Importer&) = delete;

    /// Reads and stores records for about `duration`, or up to a record with an empty text, and commits.
    /// @throws common::Error when the file cannot be read, or the course is full or cannot be written; std::bad_alloc.
    /// The records before the error are committed if the course still can. Call no further step.
    Progress step(std::chrono::milliseconds duration);

    [[nodiscard]] const Progress& progress() const { return progress_; }

    /// The records that were not stored exactly as they are in the file, up to now.
    [[nodiscard]] const ImportReport& report() const { return report_; }

    /// The file; null before the first step and if it could not be opened.
    [[nodiscard]] const RecordSource* source() const { return source_.get(); }

private:
    [[nodiscard]] std::optional<EmptyRecord> read_for(std::chrono::milliseconds duration);
    [[nodiscard]] std::optional<EmptyRecord> take(ReadRecord record);
    void hand_over(const ReadRecord& record);
    void commit();
    void keep_what_came_before();

    store::Course& course_;
    platform::Clock& clock_;
    const platform::TextCompare& text_compare_;
    Open open_;

    std::unique_ptr<RecordSource> source_;  ///< set by the first step
    std::optional<bank::NewRecords> group_; ///< records added since the last commit
    Progress progress_;
    ImportReport report_;
};

} // namespace cuedrill::exchange
