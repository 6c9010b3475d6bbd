#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace cuedrill::exchange {

/// `text` without the blanks, TABs and CR LF pairs at both ends. A lone CR or LF stays, and keeps what lies within.
std::string_view trim_exchange_text(std::string_view text);

/// Reads questions and answers from the lines of a question text.
///
/// "@Q@" starts a question, "@A@" ends it and starts its answer, which the next "@Q@" or the end of the text ends; both
/// in any case, anywhere in a line, and any number of times in a line. Any other marker is part of the text around it.
/// Lines that begin with "/*/" are left out, and so is what stands before the first "@Q@". Line breaks inside a
/// question or answer are CR LF.
class QuestionTextReader {
public:
    /// Gets each record: its number, counted from 1, and its trimmed question and answer, which may be empty. Both
    /// live as long as the call.
    using Sink = std::function<void(std::int64_t number, std::string_view question, std::string_view answer)>;

    /// The next line, without its end. Calls `sink` for each record that the line completes. What `sink` throws goes
    /// through; the reader is not to be used after that.
    void add_line(std::string_view line, const Sink& sink);

    /// The text is at its end: completes the answer being read. A question without an answer is dropped.
    void finish(const Sink& sink);

private:
    /// Null: before the first question; QS: in a question; AS: in an answer.
    enum class State { Null, QS, AS };

    void marker_found(const Sink& sink);
    void store_record(const Sink& sink);

    State m_state = State::Null;
    std::string m_question;
    std::string m_answer;
    std::int64_t m_number = 0; ///< of the last record
};

} // namespace cuedrill::exchange
