#include "exchange/decks/html_text.h"

#include "common/text.h"
#include "exchange/code_page_1252.h"
#include "exchange/decks/html_entities.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>
#include <utility>
#include <vector>

namespace cuedrill::decks {
namespace {

constexpr auto npos = std::string_view::npos;

bool is_digit(char c)
{
    return c >= '0' && c <= '9';
}

bool is_letter(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

bool is_white(char c)
{
    return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\f';
}

bool begins_with(std::string_view text, std::string_view beginning)
{
    return common::equal_ascii(text.substr(0, beginning.size()), beginning);
}

constexpr std::string_view cloze_begin = "{{c";
constexpr std::string_view cloze_end = "}}";
constexpr std::string_view cloze_colons = "::";

/// The length of "{{c1::" at the beginning of `text`; 0 if it does not begin so.
std::size_t length_of_cloze_begin(std::string_view text)
{
    if (!text.starts_with(cloze_begin))
        return 0;
    std::size_t at = cloze_begin.size();
    while (at < text.size() && is_digit(text[at]))
        ++at;
    return at > cloze_begin.size() && text.substr(at).starts_with(cloze_colons) ? at + cloze_colons.size() : 0;
}

/// A cloze whose end is not met yet.
struct OpenCloze {
    std::size_t begin = 0;
    std::size_t text = 0;
    std::size_t hint = npos; ///< where its hint begins
};

/// Parts of a text that are dropped. They may overlap.
class Cuts {
public:
    explicit Cuts(std::size_t size) : steps_(size + 1) {}

    void add(std::size_t begin, std::size_t end)
    {
        ++steps_[begin];
        --steps_[end];
    }
    [[nodiscard]] std::string rest_of(std::string_view text) const
    {
        std::string rest;
        int depth = 0;
        for (std::size_t at = 0; at < text.size(); ++at) {
            depth += steps_[at];
            if (depth == 0)
                rest.push_back(text[at]);
        }
        return rest;
    }

private:
    std::vector<int> steps_; ///< for each place: how many cuts begin there, less those that end there
};

/// `html` with each cloze that has an end replaced by what stands in it. Clozes may stand in each other.
std::string without_clozes(std::string_view html, HtmlLosses& losses)
{
    if (html.find(cloze_begin) == npos)
        return std::string(html);
    std::vector<OpenCloze> open;
    Cuts cuts(html.size());
    for (std::size_t at = 0; at < html.size();) {
        const std::string_view rest = html.substr(at);
        if (const std::size_t length = length_of_cloze_begin(rest)) {
            open.push_back({.begin = at, .text = at + length, .hint = npos});
            at += length;
        } else if (!open.empty() && rest.starts_with(cloze_end)) {
            const OpenCloze& closed = open.back();
            cuts.add(closed.begin, closed.text);
            cuts.add(std::min(closed.hint, at), at + cloze_end.size());
            ++losses.clozes;
            open.pop_back();
            at += cloze_end.size();
        } else if (!open.empty() && open.back().hint == npos && rest.starts_with(cloze_colons)) {
            open.back().hint = at;
            at += cloze_colons.size();
        } else {
            ++at;
        }
    }
    return cuts.rest_of(html);
}

std::string utf8_of(std::uint32_t code)
{
    constexpr std::uint32_t highest = 0x10FFFF;
    const bool is_surrogate = code >= 0xD800 && code <= 0xDFFF;
    if (code == 0 || code > highest || is_surrogate)
        return "\uFFFD";
    std::string text;
    const auto append = [&](std::uint32_t byte) { text.push_back(static_cast<char>(byte)); };
    const auto append_rest = [&](std::uint32_t shift) { append(0x80U | (code >> shift & 0x3FU)); };
    if (code < 0x80) {
        append(code);
    } else if (code < 0xA0) {
        // These numbers are control characters; who writes them means the code page.
        const char byte = static_cast<char>(code);
        return exchange::code_page_1252_to_utf8({&byte, 1});
    } else if (code < 0x800) {
        append(0xC0U | code >> 6U);
        append_rest(0);
    } else if (code < 0x10000) {
        append(0xE0U | code >> 12U);
        append_rest(6);
        append_rest(0);
    } else {
        append(0xF0U | code >> 18U);
        append_rest(12);
        append_rest(6);
        append_rest(0);
    }
    return text;
}

std::optional<std::uint32_t> digit_value(char c, std::uint32_t base)
{
    std::uint32_t value = base;
    if (is_digit(c))
        value = static_cast<std::uint32_t>(c - '0');
    else if (is_letter(c))
        value = static_cast<std::uint32_t>((c | 0x20) - 'a') + 10;
    return value < base ? std::optional(value) : std::nullopt;
}

/// The character of "#65" or "#x41".
std::optional<std::string> numbered_character(std::string_view name)
{
    name.remove_prefix(1);
    std::uint32_t base = 10;
    if (begins_with(name, "x")) {
        base = 16;
        name.remove_prefix(1);
    }
    if (name.empty())
        return std::nullopt;
    constexpr std::uint32_t beyond_all = 0x110000;
    std::uint32_t code = 0;
    for (const char c : name) {
        const auto digit = digit_value(c, base);
        if (!digit)
            return std::nullopt;
        code = std::min(code * base + *digit, beyond_all);
    }
    return utf8_of(code);
}

std::optional<std::string> character_of_entity(std::string_view name)
{
    if (name.starts_with('#'))
        return numbered_character(name);
    const std::uint32_t code = code_of_entity(name);
    return code == 0 ? std::nullopt : std::optional(utf8_of(code));
}

/// Tags that begin and end a line.
constexpr std::array<std::string_view, 26> blocks{
    "p",       "div",     "li",     "ul",     "ol",     "dl",     "dt",      "dd",        "h1",
    "h2",      "h3",      "h4",     "h5",     "h6",     "tr",     "table",   "hr",        "pre",
    "section", "article", "header", "footer", "center", "figure", "details", "blockquote"};

constexpr std::array<std::string_view, 6> media{"img", "audio", "video", "object", "embed", "svg"};

/// Tags whose contents are no text.
constexpr std::array<std::string_view, 2> unseen{"style", "script"};

template <std::size_t size>
bool is_one_of(std::string_view name, const std::array<std::string_view, size>& names)
{
    return std::any_of(names.begin(), names.end(),
                       [&](std::string_view one) { return common::equal_ascii(name, one); });
}

/// Lines with single blanks between words.
class Lines {
public:
    void add(std::string_view characters)
    {
        if (blank_ && !line_is_empty())
            text_.push_back(' ');
        blank_ = false;
        text_.append(characters);
    }
    void add_blank() { blank_ = true; }
    void end_line()
    {
        blank_ = false;
        text_.push_back('\n');
    }
    /// Ends the line unless it is empty.
    void begin_line()
    {
        blank_ = false;
        if (!line_is_empty())
            end_line();
    }
    [[nodiscard]] std::string take()
    {
        const std::size_t begin = text_.find_first_not_of('\n');
        if (begin == std::string::npos)
            return {};
        return text_.substr(begin, text_.find_last_not_of('\n') + 1 - begin);
    }

private:
    [[nodiscard]] bool line_is_empty() const { return text_.empty() || text_.back() == '\n'; }

    std::string text_;
    bool blank_ = false; ///< whether there was white space since the last character
};

/// Reads HTML from the beginning to the end. A search that has failed is not made again, which keeps the time linear.
class HtmlReader {
public:
    HtmlReader(std::string_view html, HtmlLosses& losses) : html_(html), losses_(losses) {}

    [[nodiscard]] std::string read()
    {
        while (at_ < html_.size()) {
            const char c = html_[at_];
            if (is_white(c))
                read_blank(1);
            else if (rest().starts_with(no_break_space))
                read_blank(no_break_space.size());
            else if (!(c == '<' && read_markup()) && !(c == '&' && read_entity()) && !(c == '[' && read_sound()))
                read_character();
        }
        return lines_.take();
    }

private:
    static constexpr std::string_view no_break_space = "\xC2\xA0";

    [[nodiscard]] std::string_view rest() const { return html_.substr(at_); }

    void read_blank(std::size_t length)
    {
        lines_.add_blank();
        at_ += length;
    }

    void read_character()
    {
        lines_.add(html_.substr(at_, 1));
        ++at_;
    }

    bool read_entity()
    {
        constexpr std::size_t longest = 32;
        const std::size_t end = html_.substr(at_, longest).find(';');
        if (end == npos)
            return false;
        const auto character = character_of_entity(html_.substr(at_ + 1, end - 1));
        if (!character)
            return false;
        if (*character == no_break_space || (character->size() == 1 && is_white(character->front())))
            lines_.add_blank();
        else
            lines_.add(*character);
        at_ += end + 1;
        return true;
    }

    /// "[sound:name]" and "[anki:play:…]"
    bool read_sound()
    {
        if (!begins_with(rest(), "[sound:") && !begins_with(rest(), "[anki:"))
            return false;
        const std::size_t end = find("]", at_, no_bracket_);
        if (end == npos)
            return false;
        ++losses_.media;
        at_ = end + 1;
        return true;
    }

    bool read_markup()
    {
        if (rest().starts_with("<!--")) {
            const std::size_t end = find("-->", at_, no_comment_end_);
            at_ = end == npos ? html_.size() : end + 3;
            return true;
        }
        const std::size_t slash = html_.substr(at_ + 1).starts_with('/') ? 1 : 0;
        const std::size_t begin = at_ + 1 + slash;
        const char first = begin < html_.size() ? html_[begin] : ' ';
        if (!is_letter(first) && (slash != 0 || (first != '!' && first != '?')))
            return false;
        const std::size_t end = end_of_tag(begin);
        if (end == npos)
            return false;
        std::size_t name_end = begin;
        while (is_letter(html_[name_end]) || is_digit(html_[name_end]))
            ++name_end;
        at_ = end + 1;
        read_tag(html_.substr(begin, name_end - begin), slash == 0);
        return true;
    }

    /// The place of the ">" that ends a tag, outside of quoted values where these are well-formed.
    std::size_t end_of_tag(std::size_t at)
    {
        const std::size_t begin = at;
        while (quotes_count_) {
            at = html_.find_first_of("\"'>", at);
            if (at == npos) {
                quotes_count_ = false;
                break;
            }
            if (html_[at] == '>')
                return at;
            if (!begins_value(at)) {
                ++at;
                continue;
            }
            const bool is_double = html_[at] == '"';
            const std::size_t closing =
                find(is_double ? "\"" : "'", at + 1, is_double ? no_double_quote_ : no_single_quote_);
            at = closing == npos ? at + 1 : closing + 1;
        }
        return find(">", begin, no_tag_end_);
    }

    /// Whether a quotation mark stands behind "=".
    [[nodiscard]] bool begins_value(std::size_t at) const
    {
        while (is_white(html_[at - 1]))
            --at;
        return html_[at - 1] == '=';
    }

    void read_tag(std::string_view name, bool is_opening)
    {
        if (common::equal_ascii(name, "br"))
            lines_.end_line();
        else if (is_one_of(name, blocks))
            lines_.begin_line();
        else if (common::equal_ascii(name, "td") || common::equal_ascii(name, "th"))
            lines_.add_blank();
        else if (is_opening && is_one_of(name, media))
            ++losses_.media;
        else if (is_opening && is_one_of(name, unseen))
            skip_to_end_of(name);
    }

    /// Skips to the closing tag, or to the end if there is none.
    void skip_to_end_of(std::string_view name)
    {
        for (at_ = html_.find("</", at_); at_ != npos; at_ = html_.find("</", at_ + 1)) {
            if (begins_with(html_.substr(at_ + 2), name))
                return;
        }
        at_ = html_.size();
    }

    /// The place of `what` from `from` on.
    /// @param is_missing remembers that there is no further one.
    std::size_t find(std::string_view what, std::size_t from, bool& is_missing) const
    {
        const std::size_t found = is_missing ? npos : html_.find(what, from);
        is_missing = found == npos;
        return found;
    }

    std::string_view html_;
    HtmlLosses& losses_;
    std::size_t at_ = 0;
    Lines lines_;
    bool quotes_count_ = true; ///< whether quoted values are looked for in tags
    bool no_double_quote_ = false;
    bool no_single_quote_ = false;
    bool no_tag_end_ = false;
    bool no_comment_end_ = false;
    bool no_bracket_ = false;
};

} // namespace

std::string html_to_text(std::string_view html, HtmlLosses& losses)
{
    const std::string text = without_clozes(html, losses);
    return HtmlReader(text, losses).read();
}

std::string words_of(const HtmlLosses& losses)
{
    std::string words;
    if (losses.media == 1)
        words += "1 picture or sound was left out.\n";
    else if (losses.media > 1)
        words += std::to_string(losses.media) + " pictures and sounds were left out.\n";
    if (losses.clozes == 1)
        words += "1 cloze deletion was read as its text.\n";
    else if (losses.clozes > 1)
        words += std::to_string(losses.clozes) + " cloze deletions were read as their texts.\n";
    return words;
}

} // namespace cuedrill::decks
