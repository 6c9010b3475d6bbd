#include "exchange/decks/table_parser.h"

#include "exchange/text_decoding.h"

#include <utility>

namespace cuedrill::decks {
namespace {

bool is_blank(char c)
{
    return c == ' ' || c == '\t';
}

bool is_line_end(char c)
{
    return c == '\r' || c == '\n';
}

} // namespace

void TableParser::add(std::string_view text, const Sink& sink)
{
    for (const char c : text)
        take(c, sink);
}

void TableParser::finish(const Sink& sink)
{
    while (state_ == State::quoted)
        read_again_unclosed(sink);
    if (state_ != State::row_begins && state_ != State::comment)
        end_line(sink);
}

void TableParser::take(char c, const Sink& sink)
{
    if (std::exchange(after_cr_, false) && c == '\n') {
        if (state_ == State::quoted)
            held_.push_back(c);
        return;
    }
    after_cr_ = c == '\r';
    switch (state_) {
    case State::quoted:
        take_quoted(c, sink);
        break;
    case State::mark:
    case State::behind_quoted:
        take_behind_mark(c, sink);
        break;
    case State::comment:
        if (is_line_end(c)) {
            ++line_;
            state_ = State::row_begins;
        }
        break;
    case State::row_begins:
    case State::field_begins:
    case State::plain:
        take_outside(c, sink);
        break;
    }
}

void TableParser::take_quoted(char c, const Sink& sink)
{
    held_.push_back(c);
    if (c == shape_.quote) {
        state_ = State::mark;
        return;
    }
    if (is_line_end(c))
        ++line_;
    keep(is_line_end(c) ? '\n' : c);
    if (held_.size() >= longest_quoted)
        read_again_unclosed(sink);
}

void TableParser::take_behind_mark(char c, const Sink& sink)
{
    if (c == shape_.separator || is_line_end(c)) {
        take_outside(c, sink);
        return;
    }
    held_.push_back(c);
    if (c == shape_.quote && state_ == State::mark) {
        keep(c);
        state_ = State::quoted;
    } else if (is_blank(c)) {
        state_ = State::behind_quoted;
    } else {
        read_again_unquoted(sink);
    }
}

void TableParser::take_outside(char c, const Sink& sink)
{
    if (is_line_end(c)) {
        end_line(sink);
        return;
    }
    if (state_ == State::row_begins) {
        row_.line = line_;
        state_ = c == shape_.comment && c != '\0' ? State::comment : State::field_begins;
        if (state_ == State::comment)
            return;
    }
    if (c == shape_.separator) {
        end_field();
    } else if (state_ == State::field_begins && c == shape_.quote && c != '\0') {
        begin_quoted();
    } else {
        state_ = State::plain;
        keep(c);
    }
}

void TableParser::begin_quoted()
{
    state_ = State::quoted;
    field_was_quoted_ = true;
    line_of_mark_ = line_;
    held_.clear();
}

/// Takes the opening mark of the current field for an ordinary character.
void TableParser::read_again_unquoted(const Sink& sink)
{
    const std::string held = std::exchange(held_, {});
    ++read_again_;
    field_.assign(1, shape_.quote);
    field_was_quoted_ = false;
    line_ = line_of_mark_;
    state_ = State::plain;
    after_cr_ = false;
    add(held, sink);
}

void TableParser::read_again_unclosed(const Sink& sink)
{
    if (unclosed_.count++ == 0)
        unclosed_.first_line = line_of_mark_;
    read_again_unquoted(sink);
}

void TableParser::keep(char c)
{
    if (field_.size() < most_kept)
        field_.push_back(c);
}

void TableParser::end_field()
{
    if (field_.size() == most_kept)
        field_.resize(exchange::without_begun_sequence(field_).size());
    if (row_.fields.size() < most_fields)
        row_.fields.push_back(std::move(field_));
    else
        row_.has_more = true;
    field_.clear();
    state_ = State::field_begins;
}

/// Hands on the row, unless the line has nothing but blanks.
void TableParser::end_line(const Sink& sink)
{
    ++line_;
    const bool quoted = std::exchange(field_was_quoted_, false);
    const bool is_blank_line = row_.fields.empty() && !quoted && field_.find_first_not_of(" \t") == std::string::npos;
    if (is_blank_line) {
        field_.clear();
    } else {
        end_field();
        sink(std::exchange(row_, {}));
    }
    state_ = State::row_begins;
}

} // namespace cuedrill::decks
