#pragma once

#include "exchange/decks/encodings.h"
#include "exchange/text_decoding.h"
#include "platform/files.h"
#include "platform/text_conversions.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace cuedrill::decks {

/// Decodes the bytes of one text to UTF-8 without byte order mark and NUL characters. A byte that belongs to no
/// character becomes exchange::unreadable_mark.
class Decoding {
public:
    /// @param marked whether the text begins with the mark of UTF-8.
    /// @throws common::Error when the encoding is not usable.
    Decoding(Encoding encoding, bool marked, const platform::TextConversions& conversions);

    [[nodiscard]] std::string decode(std::string bytes);
    [[nodiscard]] std::string finish();

private:
    [[nodiscard]] std::string cleaned(std::string text);

    std::optional<exchange::TextDecoder> decoder_; ///< otherwise `conversion_`
    std::unique_ptr<platform::TextConversion> conversion_;
    bool begun_ = false;
};

/// A text file, read in pieces as UTF-8.
///
/// Unless the encoding is given, a mark says it, and without a mark the first 64 KiB: UTF-16 if they have NULs at every
/// second place, Windows-1252 if they are not well-formed UTF-8, UTF-8 if they are and hold more than ASCII. Where they
/// are ASCII, the whole file is read first: it is UTF-8 if all of it is well-formed, otherwise Windows-1252.
class DecodedFile {
public:
    /// Bytes that are read at once at the beginning.
    static constexpr std::size_t sample_size = 65536;

    /// Reads the beginning.
    /// @param encoding std::nullopt to find it out.
    /// @throws common::Error when the file cannot be read or the encoding is not usable.
    DecodedFile(std::unique_ptr<platform::FileReading> file, const platform::TextConversions& conversions,
                std::optional<Encoding> encoding);

    /// The text of the first 64 KiB. If that is not all, its last line may be incomplete.
    [[nodiscard]] const std::string& beginning() const { return beginning_; }
    /// Whether `beginning` is all of the text.
    [[nodiscard]] bool is_whole() const { return is_whole_; }

    /// The next piece, from the beginning on: whole characters, maybe none; std::nullopt at the end.
    /// @throws common::Error when the file cannot be read.
    [[nodiscard]] std::optional<std::string> read();

    /// How much of the text has been read, in percent; std::nullopt for a small file.
    [[nodiscard]] std::optional<int> percent() const;

private:
    [[nodiscard]] std::optional<Encoding> encoding_of(const std::string& sample, std::optional<Encoding> given) const;
    void begin(Encoding encoding);
    void survey();

    std::unique_ptr<platform::FileReading> file_;
    const platform::TextConversions& conversions_;
    bool is_whole_ = false;
    bool marked_ = false; ///< whether it begins with the mark of UTF-8
    std::string beginning_;
    exchange::TextSurvey survey_;      ///< while the encoding is not known
    std::optional<Decoding> decoding_; ///< set when it is known
    std::uint64_t read_ = 0;           ///< bytes read as text
    bool at_end_ = false;
};

} // namespace cuedrill::decks
