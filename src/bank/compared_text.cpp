#include "bank/compared_text.h"

#include "common/text.h"

namespace cuedrill::bank {

std::string comparable_text(std::string_view text, const platform::TextCompare& text_compare)
{
    return text_compare.nfc(common::with_one_kind_of_line_end(std::string(text)));
}

bool same_text(std::string_view a, std::string_view b, const platform::TextCompare& text_compare)
{
    return text_compare.equal(comparable_text(a, text_compare), comparable_text(b, text_compare));
}

std::string comparison_key(std::string_view text, const platform::TextCompare& text_compare)
{
    return text_compare.fold(comparable_text(text, text_compare));
}

} // namespace cuedrill::bank
