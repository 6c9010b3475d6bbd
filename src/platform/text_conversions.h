#pragma once

#include <memory>
#include <string>
#include <string_view>

namespace cuedrill::platform {

/// Converts one text to UTF-8, piece by piece.
class TextConversion {
public:
    TextConversion() = default;
    TextConversion(const TextConversion&) = delete;
    TextConversion& operator=(const TextConversion&) = delete;
    virtual ~TextConversion() = default;

    /// Converts the next bytes. An incomplete character at the end is kept for the next call.
    /// @throws common::Error when the conversion is not usable.
    [[nodiscard]] virtual std::string convert(std::string_view bytes) = 0;

    /// Converts the rest, at the end of the text.
    /// @throws common::Error when the conversion is not usable.
    [[nodiscard]] virtual std::string finish() = 0;
};

/// The character sets from which texts can be converted.
class TextConversions {
public:
    virtual ~TextConversions() = default;

    /// Begins the conversion of a text.
    /// @param encoding name of the character set, such as "ISO-8859-2".
    /// @param unreadable stands in the result for each sequence of bytes that is no character.
    /// @throws common::Error when there is no such character set.
    [[nodiscard]] virtual std::unique_ptr<TextConversion> begin(const std::string& encoding, char unreadable) const = 0;
};

} // namespace cuedrill::platform
