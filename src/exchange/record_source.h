#pragma once

#include "exchange/question_text.h"

#include <cstdint>
#include <optional>
#include <string>

namespace cuedrill::exchange {

/// The most bytes of a file that is imported: more than the fullest course can hold, comments included.
inline constexpr std::uint64_t longest_file = 64ULL * 1024 * 1024;

/// A file that gives its records one by one. However long the file is, each step is short and only a piece of the file
/// is in memory.
class RecordSource {
public:
    enum class Step {
        reading, ///< a piece was read
        record,  ///< `record` returns the next record
        end      ///< the end of the file is reached
    };

    RecordSource() = default;
    RecordSource(const RecordSource&) = delete;
    RecordSource& operator=(const RecordSource&) = delete;
    virtual ~RecordSource() = default;

    /// Reads the next piece or returns the next record.
    /// @throws common::Error when the file cannot be read.
    [[nodiscard]] virtual Step step() = 0;

    /// The record that the last step returned.
    [[nodiscard]] virtual const ReadRecord& record() const = 0;

    /// Whether anything that begins a record was found so far.
    [[nodiscard]] virtual bool has_question() const = 0;

    /// How much of the file has been read for records, in percent; std::nullopt for a small file.
    [[nodiscard]] virtual std::optional<int> percent() const = 0;

    /// What the user is told about a file in which nothing begins a record: what was looked for. Lines with CR LF.
    [[nodiscard]] virtual std::string nothing_found() const = 0;

    /// What was left out of the file up to now, in lines with CR LF; empty for nothing.
    [[nodiscard]] virtual std::string left_out() const = 0;
};

} // namespace cuedrill::exchange
