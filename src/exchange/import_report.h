#pragma once

#include "exchange/question_text.h"
#include "exchange/record_lines.h"
#include "platform/desktop.h"

#include <cstdint>
#include <optional>
#include <string>

namespace cuedrill::exchange {

/// Says which of the record's texts is longer than a course can hold, and shows it; nothing when both fit.
[[nodiscard]] std::string too_long(const ReadRecord& record);

/// What an import says at its end about records that did not come into the course as they are in the file.
class ImportReport {
public:
    /// The record was read; its characters that could not be are told.
    void add_read(const ReadRecord& record);
    /// The record was not stored.
    void add_refused(std::int64_t number, const std::string& reason);

    /// The box; nothing when there is nothing to be told.
    [[nodiscard]] std::optional<platform::MessageBox> box() const;

private:
    RecordLines m_lines;
    std::int64_t m_refused = 0;
    std::int64_t m_unreadable = 0; ///< records
};

} // namespace cuedrill::exchange
