#include "exchange/question_text.h"

#include <cstddef>
#include <utility>

namespace cuedrill::exchange {
namespace {

constexpr std::size_t marker_length = 3;

char letter_of(Marker marker)
{
    return marker == Marker::question ? 'q' : 'a';
}

/// Whether `c` is `letter`, ignoring case; `letter` is in lower case.
bool is_letter(char c, char letter)
{
    constexpr char case_bit = 0x20; // upper and lower case of an ASCII letter differ only in this bit
    return static_cast<char>(c | case_bit) == letter;
}

/// The offset of the marker; npos if there is none.
std::size_t find_marker(std::string_view text, Marker marker)
{
    for (std::size_t at = text.find('@'); at != std::string_view::npos; at = text.find('@', at + 1)) {
        const std::string_view here = text.substr(at, marker_length);
        if (here.size() < marker_length)
            break;
        if (is_letter(here[1], letter_of(marker)) && here[2] == '@')
            return at;
    }
    return std::string_view::npos;
}

/// How many bytes at the end of `text` may be the beginning of a marker.
std::size_t begun_marker(std::string_view text, Marker marker)
{
    if (text.ends_with('@'))
        return 1;
    return text.size() > 1 && text[text.size() - 2] == '@' && is_letter(text.back(), letter_of(marker)) ? 2 : 0;
}

} // namespace

bool holds_marker(std::string_view text, Marker marker)
{
    return find_marker(text, marker) != std::string_view::npos;
}

void QuestionTextReader::add(std::string_view text, const Sink& sink)
{
    if (line_ == Line::is_comment)
        return;
    held_.append(text);
    read_held(false, sink);
}

void QuestionTextReader::end_line(const Sink& sink)
{
    read_held(true, sink);
    if (line_ == Line::is_text && state_ != State::Null)
        (state_ == State::QS ? question_ : answer_).add_line_end();
    line_ = Line::begins;
}

// A marker never spans a line end, so each line is searched once, on its own, and only the text of the current record
// is kept. The time is therefore linear in the text, however it is divided into lines and pieces.
void QuestionTextReader::read_held(bool line_ends, const Sink& sink)
{
    if (line_ == Line::begins) {
        if (!line_ends && held_.size() < comment_start.size())
            return;
        line_ = held_.starts_with(comment_start) ? Line::is_comment : Line::is_text;
    }
    const std::string held = std::exchange(held_, {});
    if (line_ == Line::is_comment)
        return;
    std::string_view rest = held;
    for (;;) {
        const Marker awaited = state_ == State::QS ? Marker::answer : Marker::question;
        const std::size_t at = find_marker(rest, awaited);
        if (at == std::string_view::npos) {
            const std::size_t kept_back = line_ends ? 0 : begun_marker(rest, awaited);
            add_to_part(rest.substr(0, rest.size() - kept_back));
            held_ = rest.substr(rest.size() - kept_back);
            return;
        }
        add_to_part(rest.substr(0, at));
        rest.remove_prefix(at + marker_length);
        marker_found(sink);
    }
}

void QuestionTextReader::add_to_part(std::string_view text)
{
    if (state_ != State::Null)
        (state_ == State::QS ? question_ : answer_).add(text);
}

void QuestionTextReader::marker_found(const Sink& sink)
{
    has_question_ = true;
    if (state_ == State::AS)
        store_record(sink);
    state_ = state_ == State::QS ? State::AS : State::QS;
}

void QuestionTextReader::finish(const Sink& sink)
{
    if (line_ != Line::begins || !held_.empty())
        end_line(sink);
    if (state_ == State::AS)
        store_record(sink);
    state_ = State::Null;
    question_ = {};
}

void QuestionTextReader::store_record(const Sink& sink)
{
    sink({.number = ++number_, .question = question_.take(), .answer = answer_.take(), .place = {}});
}

} // namespace cuedrill::exchange
