#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace cuedrill::platform {

/// The one answer to "are these texts equal?" and "which comes first?". All texts are UTF-8; ill-formed bytes count as
/// U+FFFD. The rules are fixed (English, United Kingdom), never those of the user's locale.
class TextCompare {
public:
    virtual ~TextCompare() = default;

    /// Whether both texts have the same code points after simple case folding.
    [[nodiscard]] virtual bool equal(std::string_view a, std::string_view b) const = 0;

    /// Below 0, 0 or above 0 as `a` sorts before, with or after `b`: the alphabetical order of the folded texts, ties
    /// by code point. 0 exactly when `equal(a, b)`.
    [[nodiscard]] virtual int compare(std::string_view a, std::string_view b) const = 0;

    /// `text` in simple case folding, code point by code point, so that places stay the same: `equal(a, b)` when both
    /// fold to the same.
    [[nodiscard]] virtual std::string fold(std::string_view text) const = 0;

    /// `text` in lower case.
    [[nodiscard]] virtual std::string lower(std::string_view text) const = 0;

    /// `text` in Unicode normalisation form C, the form in which every text enters the program.
    [[nodiscard]] virtual std::string nfc(std::string_view text) const = 0;

    /// A number that changes when `compare` may order some texts differently than before (rules, locale, collation
    /// data).
    [[nodiscard]] virtual std::uint32_t order_version() const = 0;
};

} // namespace cuedrill::platform
