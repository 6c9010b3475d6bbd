#pragma once

#include "exchange/collected_text.h"

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace cuedrill::exchange {

/// A line that begins so is left out by the reader.
inline constexpr std::string_view comment_start = "/*/";

/// What the marker in question is.
enum class Marker { question, answer };

/// Whether `text` holds the marker "@Q@" or "@A@", in either case.
[[nodiscard]] bool holds_marker(std::string_view text, Marker marker);

/// A record of a question text.
struct ReadRecord {
    std::int64_t number = 0; ///< counted from 1
    ReadText question{};     ///< may be empty, as may the answer
    ReadText answer{};
};

/// Reads questions and answers from the lines of a question text, which may come in pieces of any size.
///
/// "@Q@" starts a question, "@A@" ends it and starts its answer, which the next "@Q@" or the end of the text ends; both
/// in any case, anywhere in a line, and any number of times in a line. Any other marker is part of the text around it.
/// Lines that begin with "/*/" are left out, and so is what stands before the first "@Q@". Line breaks inside a
/// question or answer are CR LF.
class QuestionTextReader {
public:
    /// Gets each record. What it throws goes through; the reader is not to be used after that.
    using Sink = std::function<void(ReadRecord record)>;

    /// More of the line being read, in whole characters. Calls `sink` for each record that it completes.
    void add(std::string_view text, const Sink& sink);

    /// The line being read is at its end.
    void end_line(const Sink& sink);

    /// The text is at its end: completes the answer being read. A question without an answer is dropped.
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
    std::string held_; ///< of the line; it cannot be told yet whether a comment or a marker begins there
    CollectedText question_;
    CollectedText answer_;
    std::int64_t number_ = 0; ///< of the last record
    bool has_question_ = false;
};

} // namespace cuedrill::exchange
