#pragma once

#include <cstdint>
#include <string>

namespace cuedrill::exchange {

/// Lines about records, for the box that scrolls. A list that nobody could read to its end is cut off, with the number
/// of lines that are missing.
class RecordLines {
public:
    /// Adds a line that begins with the record's number.
    void add(std::int64_t number, const std::string& words);
    [[nodiscard]] std::string text() const;

private:
    std::string lines_;
    std::int64_t left_out_ = 0;
};

/// `text` in quotation marks and in one line; only the beginning of one that is far longer than any record has.
[[nodiscard]] std::string quoted_line(const std::string& text);

} // namespace cuedrill::exchange
