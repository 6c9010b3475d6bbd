#pragma once

#include <cstdint>
#include <string>

namespace cuedrill::exchange {

/// Lines about records, for the scrolling box. A list too long to be read is cut off and ends with the number of
/// missing lines.
class RecordLines {
public:
    /// Adds a line that starts with the name of the record.
    void add(const std::string& name, const std::string& words);
    [[nodiscard]] std::string text() const;

private:
    std::string lines_;
    std::int64_t left_out_ = 0;
};

/// How a line about a record names it: by its place in the file where there is one, otherwise by its number.
[[nodiscard]] std::string record_name(std::int64_t number, const std::string& place = {});

/// `text` in quotation marks and on one line; truncated if it is far longer than any record.
[[nodiscard]] std::string quoted_line(const std::string& text);

} // namespace cuedrill::exchange
