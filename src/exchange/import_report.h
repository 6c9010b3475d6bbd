#pragma once

#include "exchange/question_text.h"
#include "exchange/record_lines.h"

#include <cstdint>
#include <string>

namespace cuedrill::exchange {

/// A message saying which of the record's texts is longer than a course can hold, with the text; empty if both fit.
[[nodiscard]] std::string too_long(const ReadRecord& record);

/// Collects messages about records that an import did not store exactly as they are in the file.
class ImportReport {
public:
    /// Notes a record that was read, with its unreadable characters.
    void add_read(const ReadRecord& record);
    /// Notes a record that was not stored.
    void add_refused(const ReadRecord& record, const std::string& reason);

    /// How many records were refused, and how many had unreadable characters; empty if there is nothing to report.
    [[nodiscard]] std::string summary() const;
    /// A line for each of these records: its place or number in the file, the reason and the text.
    [[nodiscard]] std::string lines() const { return lines_.text(); }

private:
    RecordLines lines_;
    std::int64_t refused_ = 0;
    std::int64_t unreadable_ = 0; ///< number of records with unreadable characters
};

} // namespace cuedrill::exchange
