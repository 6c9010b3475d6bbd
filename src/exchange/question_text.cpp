#include "exchange/question_text.h"

#include "common/text.h"

#include <cstddef>

namespace cuedrill::exchange {
namespace {

constexpr std::string_view comment = "/*/";
constexpr std::size_t marker_length = 3;

/// Where the marker "@" + `letter` + "@" begins, the letter in either case. `letter` is given in lower case.
std::size_t find_marker(std::string_view text, char letter)
{
    constexpr char case_bit = 0x20; // the cases of an ASCII letter differ in this bit only
    for (std::size_t at = text.find('@'); at != std::string_view::npos; at = text.find('@', at + 1)) {
        const std::string_view here = text.substr(at, marker_length);
        if (here.size() < marker_length)
            break;
        if (static_cast<char>(here[1] | case_bit) == letter && here[2] == '@')
            return at;
    }
    return std::string_view::npos;
}

bool has_outer_white_space(std::string_view text)
{
    return text.starts_with(common::cr_lf) || text.ends_with(common::cr_lf) || text.starts_with('\t') ||
           text.ends_with('\t');
}

} // namespace

std::string_view trim_exchange_text(std::string_view text)
{
    text = common::trim_blanks(text);
    while (has_outer_white_space(text)) {
        while (text.starts_with(common::cr_lf))
            text.remove_prefix(common::cr_lf.size());
        while (text.ends_with(common::cr_lf))
            text.remove_suffix(common::cr_lf.size());
        while (text.ends_with('\t'))
            text.remove_suffix(1);
        while (text.starts_with('\t'))
            text.remove_prefix(1);
        text = common::trim_blanks(text);
    }
    return text;
}

// A marker never spans a line end, so each line is searched once, on its own, and only the text of the record being
// read is kept: the time is linear in the text, however it is cut into lines.
void QuestionTextReader::add_line(std::string_view line, const Sink& sink)
{
    if (line.starts_with(comment))
        return;
    for (;;) {
        const std::size_t at = find_marker(line, m_state == State::QS ? 'a' : 'q');
        if (m_state != State::Null) {
            std::string& part = m_state == State::QS ? m_question : m_answer;
            part.append(line.substr(0, at));
            if (at == std::string_view::npos)
                part.append(common::cr_lf);
        }
        if (at == std::string_view::npos)
            return;
        line.remove_prefix(at + marker_length);
        marker_found(sink);
    }
}

void QuestionTextReader::marker_found(const Sink& sink)
{
    if (m_state == State::AS)
        store_record(sink);
    m_state = m_state == State::QS ? State::AS : State::QS;
}

void QuestionTextReader::finish(const Sink& sink)
{
    if (m_state == State::AS)
        store_record(sink);
    m_state = State::Null;
    m_question.clear();
}

void QuestionTextReader::store_record(const Sink& sink)
{
    ++m_number;
    sink(m_number, trim_exchange_text(m_question), trim_exchange_text(m_answer));
    m_question.clear();
    m_answer.clear();
}

} // namespace cuedrill::exchange
