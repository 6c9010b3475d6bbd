#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace cuedrill::platform {

/// Decides everywhere whether texts are equal and how they sort. All texts are UTF-8; ill-formed bytes count as U+FFFD.
/// The rules are fixed (English, United Kingdom) and independent of the user's locale.
class TextCompare {
public:
    virtual ~TextCompare() = default;

    /// Whether both texts have the same code points after simple case folding.
    [[nodiscard]] virtual bool equal(std::string_view a, std::string_view b) const = 0;

    /// Negative, 0 or positive if `a` sorts before, with or after `b`: alphabetical order of the case-folded texts,
    /// ties by code point. 0 exactly if `equal(a, b)`.
    [[nodiscard]] virtual int compare(std::string_view a, std::string_view b) const = 0;

    /// `text` after simple case folding, code point by code point, so that positions do not change. Two texts are
    /// `equal` if they fold to the same text.
    [[nodiscard]] virtual std::string fold(std::string_view text) const = 0;

    /// `text` in lower case.
    [[nodiscard]] virtual std::string lower(std::string_view text) const = 0;

    /// `text` in Unicode normalisation form C. Every text entering the program is brought to this form.
    [[nodiscard]] virtual std::string nfc(std::string_view text) const = 0;

    /// A number that changes whenever `compare` may order some texts differently than before (rules, locale, collation
    /// data).
    [[nodiscard]] virtual std::uint32_t order_version() const = 0;
};

} // namespace cuedrill::platform
