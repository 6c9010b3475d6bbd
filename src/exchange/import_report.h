#pragma once

#include "exchange/question_text.h"
#include "exchange/record_lines.h"

#include <cstdint>
#include <string>

namespace cuedrill::exchange {

/// Says which of the record's texts is longer than a course can hold, and shows it; nothing when both fit.
[[nodiscard]] std::string too_long(const ReadRecord& record);

/// What an import has to say about records that did not come into the course as they are in the file.
class ImportReport {
public:
    /// The record was read; its characters that could not be are told.
    void add_read(const ReadRecord& record);
    /// The record was not stored.
    void add_refused(std::int64_t number, const std::string& reason);

    /// How many records were refused, and in how many characters could not be read; empty when there is nothing to be
    /// told.
    [[nodiscard]] std::string summary() const;
    /// A line for each of them: its number in the file, the reason and the text.
    [[nodiscard]] std::string lines() const { return lines_.text(); }

private:
    RecordLines lines_;
    std::int64_t refused_ = 0;
    std::int64_t unreadable_ = 0; ///< records
};

} // namespace cuedrill::exchange
