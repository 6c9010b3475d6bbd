#pragma once

#include <string>
#include <string_view>

namespace cuedrill::decks {

/// The encodings that a user can name, in the order in which they are told.
enum class Encoding {
    utf_8,
    utf_16, ///< either byte order, by the mark or the look of the text
    utf_16_le,
    utf_16_be,
    windows_1252,
    windows_1250,
    windows_1251,
    iso_8859_1,
    iso_8859_2,
    iso_8859_15,
    shift_jis,
    gb18030,
    koi8_r
};

/// The name of an encoding.
[[nodiscard]] std::string name_of(Encoding encoding);

/// The encoding of that name, in either case.
/// @throws common::Error with the names of all of them.
[[nodiscard]] Encoding encoding_named(std::string_view name);

} // namespace cuedrill::decks
