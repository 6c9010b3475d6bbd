#include "exchange/text_decoding.h"

#include "common/errors.h"
#include "common/text.h"
#include "exchange/code_page_1252.h"

#include <cstddef>

namespace cuedrill::exchange {
namespace {

constexpr std::string_view utf16_little_endian_mark = "\xFF\xFE";
constexpr std::string_view utf16_big_endian_mark = "\xFE\xFF";
constexpr std::string_view replacement_character = "\xEF\xBF\xBD";
constexpr char nul = '\0';

std::string with_ill_formed_replaced(std::string_view text)
{
    std::string result;
    result.reserve(text.size());
    while (!text.empty()) {
        const std::string_view character = common::first_code_points(text, 1);
        result.append(common::is_utf8(character) ? character : replacement_character);
        text.remove_prefix(character.size());
    }
    return result;
}

} // namespace

std::string decode_text(std::string bytes)
{
    if (bytes.starts_with(utf16_little_endian_mark) || bytes.starts_with(utf16_big_endian_mark))
        throw common::Error("The file is encoded as UTF-16. Save it as UTF-8 or Windows-1252 and import it again.");
    const bool marked = bytes.starts_with(utf8_mark);
    if (marked)
        bytes.erase(0, utf8_mark.size());
    std::erase(bytes, nul);
    if (common::is_utf8(bytes))
        return bytes;
    return marked ? with_ill_formed_replaced(bytes) : code_page_1252_to_utf8(bytes);
}

bool is_read_as_utf8(std::string bytes)
{
    std::erase(bytes, nul);
    return common::is_utf8(bytes);
}

LineReader::LineReader(std::string_view text)
    : m_rest(text), m_line_end(text.find(common::cr_lf) == std::string_view::npos ? "\n" : common::cr_lf)
{
}

std::optional<std::string_view> LineReader::next()
{
    if (m_rest.empty())
        return std::nullopt;
    const std::size_t end = m_rest.find(m_line_end);
    const std::string_view line = m_rest.substr(0, end);
    m_rest.remove_prefix(end == std::string_view::npos ? m_rest.size() : end + m_line_end.size());
    return line;
}

} // namespace cuedrill::exchange
