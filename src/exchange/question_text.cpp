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

/// Whether `c` is the letter, given in lower case, in either case.
bool is_letter(char c, char letter)
{
    constexpr char case_bit = 0x20; // the cases of an ASCII letter differ in this bit only
    return static_cast<char>(c | case_bit) == letter;
}

/// Where the marker begins.
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

/// How many bytes at the end of `text` a marker may begin with.
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
    if (m_line == Line::is_comment)
        return;
    m_held.append(text);
    read_held(false, sink);
}

void QuestionTextReader::end_line(const Sink& sink)
{
    read_held(true, sink);
    if (m_line == Line::is_text && m_state != State::Null)
        (m_state == State::QS ? m_question : m_answer).add_line_end();
    m_line = Line::begins;
}

// A marker never spans a line end, so each line is searched once, on its own, and only the text of the record being
// read is kept: the time is linear in the text, however it is cut into lines and pieces.
void QuestionTextReader::read_held(bool line_ends, const Sink& sink)
{
    if (m_line == Line::begins) {
        if (!line_ends && m_held.size() < comment_start.size())
            return;
        m_line = m_held.starts_with(comment_start) ? Line::is_comment : Line::is_text;
    }
    const std::string held = std::exchange(m_held, {});
    if (m_line == Line::is_comment)
        return;
    std::string_view rest = held;
    for (;;) {
        const Marker awaited = m_state == State::QS ? Marker::answer : Marker::question;
        const std::size_t at = find_marker(rest, awaited);
        if (at == std::string_view::npos) {
            const std::size_t kept_back = line_ends ? 0 : begun_marker(rest, awaited);
            add_to_part(rest.substr(0, rest.size() - kept_back));
            m_held = rest.substr(rest.size() - kept_back);
            return;
        }
        add_to_part(rest.substr(0, at));
        rest.remove_prefix(at + marker_length);
        marker_found(sink);
    }
}

void QuestionTextReader::add_to_part(std::string_view text)
{
    if (m_state != State::Null)
        (m_state == State::QS ? m_question : m_answer).add(text);
}

void QuestionTextReader::marker_found(const Sink& sink)
{
    m_has_question = true;
    if (m_state == State::AS)
        store_record(sink);
    m_state = m_state == State::QS ? State::AS : State::QS;
}

void QuestionTextReader::finish(const Sink& sink)
{
    if (m_line != Line::begins || !m_held.empty())
        end_line(sink);
    if (m_state == State::AS)
        store_record(sink);
    m_state = State::Null;
    m_question = {};
}

void QuestionTextReader::store_record(const Sink& sink)
{
    sink({.number = ++m_number, .question = m_question.take(), .answer = m_answer.take()});
}

} // namespace cuedrill::exchange
