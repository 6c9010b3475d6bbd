#pragma once

#include <cstdint>
#include <string>

namespace cuedrill::exchange {

/// Lines about records, for the scrolling box. A list too long to be read is cut off and ends with the number of
/// missing lines.
class RecordLines {
public:
    /// Adds a line that starts with the record's number.
    void add(std::int64_t number, const std::string& words);
    [[nodiscard]] std::string text() const;

private:
    std::string lines_;
    std::int64_t left_out_ = 0;
};

/// `text` in quotation marks and on one line; truncated if it is far longer than any record.
[[nodiscard]] std::string quoted_line(const std::string& text);

} // namespace cuedrill::exchange
