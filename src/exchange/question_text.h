#pragma once

#include "exchange/collected_text.h"

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace cuedrill::exchange {

/// A line that begins with this is a comment.
inline constexpr std::string_view comment_start = "/*/";

/// The kind of marker.
enum class Marker { question, answer };

/// Whether `text` contains the marker "@Q@" or "@A@", ignoring case.
[[nodiscard]] bool holds_marker(std::string_view text, Marker marker);

/// A record of a question text.
struct ReadRecord {
    std::int64_t number = 0; ///< counted from 1
    ReadText question{};     ///< may be empty, as may the answer
    ReadText answer{};
    /// Where it stands in the file, in words ("line 12"); empty for a question text, whose records have numbers only.
    std::string place{};
};

/// Parses questions and answers from the lines of a question text, which may be added in pieces of any size.
///
/// "@Q@" starts a question; "@A@" ends the question and starts its answer; the next "@Q@" or the end of the text ends
/// the answer. Markers are recognised in either case, anywhere in a line, and several times per line. Any other marker
/// is part of the surrounding text. Lines that begin with "/*/" are comments; they are skipped, as is everything before
/// the first "@Q@". Line breaks inside a question or answer are CR LF.
class QuestionTextReader {
public:
    /// Receives each record. An exception from it passes through; do not use the reader after that.
    using Sink = std::function<void(ReadRecord record)>;

    /// Adds a piece of the current line, in whole characters. Calls `sink` for each completed record.
    void add(std::string_view text, const Sink& sink);

    /// Ends the current line.
    void end_line(const Sink& sink);

    /// Ends the text and completes the current answer. A question without an answer is dropped.
    void finish(const Sink& sink);

    /// Whether any "@Q@" outside a comment was found.
    [[nodiscard]] bool has_question() const { return has_question_; }

private:
    /// Null: before the first question; QS: in a question; AS: in an answer.
    enum class State { Null, QS, AS };
    enum class Line { begins, is_text, is_comment };

    void read_held(bool line_ends, const Sink& sink);
    void add_to_part(std::string_view text);
    void marker_found(const Sink& sink);
    void store_record(const Sink& sink);

    State state_ = State::Null;
    Line line_ = Line::begins;
    std::string held_; ///< part of the line that may still turn out to begin a comment or a marker
    CollectedText question_;
    CollectedText answer_;
    std::int64_t number_ = 0; ///< number of the last record
    bool has_question_ = false;
};

} // namespace cuedrill::exchange
