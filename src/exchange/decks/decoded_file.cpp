#include "exchange/decks/decoded_file.h"

#include "common/text.h"
#include "exchange/collected_text.h"

#include <algorithm>
#include <utility>

namespace cuedrill::decks {
namespace {

/// Bytes per step while the encoding is looked for, and while the text is read.
constexpr std::size_t surveyed_piece = 262144;
constexpr std::size_t read_piece = 16384;

/// Shorter files are read so quickly that they need no progress display.
constexpr std::uint64_t long_file = 1024ULL * 1024;

constexpr char nul = '\0';

std::string read_sample(platform::FileReading& file)
{
    std::string sample;
    while (sample.size() < DecodedFile::sample_size) {
        const std::string piece = file.read(DecodedFile::sample_size - sample.size());
        if (piece.empty())
            break;
        sample.append(piece);
    }
    return sample;
}

/// The byte order of a text in UTF-16, by its mark or its NULs: every second byte of a text in Latin letters is NUL,
/// and in any other script those of blanks, digits and line ends are.
std::optional<Encoding> utf_16_order(std::string_view sample)
{
    if (sample.starts_with("\xFF\xFE"))
        return Encoding::utf_16_le;
    if (sample.starts_with("\xFE\xFF"))
        return Encoding::utf_16_be;
    constexpr std::size_t at_least = 10; // one pair of bytes in so many
    std::size_t even = 0;
    std::size_t odd = 0;
    for (std::size_t at = 0; at < sample.size(); ++at)
        (at % 2 == 0 ? even : odd) += sample[at] == nul ? 1U : 0U;
    const std::size_t pairs = sample.size() / 2;
    if (odd * at_least > pairs && even * at_least <= odd)
        return Encoding::utf_16_le;
    if (even * at_least > pairs && odd * at_least <= even)
        return Encoding::utf_16_be;
    return std::nullopt;
}

bool is_ascii(std::string_view text)
{
    return std::all_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

} // namespace

Decoding::Decoding(Encoding encoding, bool marked, const platform::TextConversions& conversions)
{
    if (encoding == Encoding::utf_8 || encoding == Encoding::windows_1252)
        decoder_.emplace(exchange::TextFormat{
            .utf8 = encoding == Encoding::utf_8, .marked = marked && encoding == Encoding::utf_8, .line_end = {}});
    else
        conversion_ = conversions.begin(name_of(encoding), exchange::unreadable_mark);
}

std::string Decoding::decode(std::string bytes)
{
    return decoder_ ? decoder_->decode(std::move(bytes)) : cleaned(conversion_->convert(bytes));
}

std::string Decoding::finish()
{
    return decoder_ ? decoder_->finish() : cleaned(conversion_->finish());
}

std::string Decoding::cleaned(std::string text)
{
    if (!begun_ && text.starts_with(exchange::utf8_mark))
        text.erase(0, exchange::utf8_mark.size());
    begun_ = begun_ || !text.empty();
    std::erase(text, nul);
    return text;
}

DecodedFile::DecodedFile(std::unique_ptr<platform::FileReading> file, const platform::TextConversions& conversions,
                         std::optional<Encoding> encoding)
    : file_(std::move(file)), conversions_(conversions)
{
    const std::string sample = read_sample(*file_);
    is_whole_ = sample.size() < sample_size;
    marked_ = sample.starts_with(exchange::utf8_mark);
    const auto found = encoding_of(sample, encoding);
    Decoding decoding(found.value_or(Encoding::utf_8), marked_, conversions_);
    beginning_ = decoding.decode(sample);
    if (is_whole_)
        beginning_ += decoding.finish();
    if (found)
        begin(*found);
    else
        survey_.add(sample);
}

/// std::nullopt if the sample does not say it.
std::optional<Encoding> DecodedFile::encoding_of(const std::string& sample, std::optional<Encoding> given) const
{
    if (given == Encoding::utf_16)
        return utf_16_order(sample).value_or(Encoding::utf_16_le);
    if (given)
        return given;
    if (marked_)
        return Encoding::utf_8;
    if (const auto order = utf_16_order(sample))
        return order;
    std::string text = sample;
    std::erase(text, nul);
    if (!common::is_utf8(is_whole_ ? std::string_view(text) : exchange::without_begun_sequence(text)))
        return Encoding::windows_1252;
    return is_whole_ || !is_ascii(text) ? std::optional(Encoding::utf_8) : std::nullopt;
}

void DecodedFile::begin(Encoding encoding)
{
    decoding_.emplace(encoding, marked_, conversions_);
    file_->rewind();
}

void DecodedFile::survey()
{
    std::string bytes = file_->read(surveyed_piece);
    if (bytes.empty())
        begin(survey_.format().utf8 ? Encoding::utf_8 : Encoding::windows_1252);
    else
        survey_.add(std::move(bytes));
}

std::optional<std::string> DecodedFile::read()
{
    if (at_end_)
        return std::nullopt;
    if (!decoding_) {
        survey();
        return std::string();
    }
    std::string bytes = file_->read(read_piece);
    at_end_ = bytes.empty();
    read_ += bytes.size();
    return at_end_ ? decoding_->finish() : decoding_->decode(std::move(bytes));
}

std::optional<int> DecodedFile::percent() const
{
    constexpr std::uint64_t whole = 100;
    if (file_->size() < long_file)
        return std::nullopt;
    return static_cast<int>(std::min(read_ * whole / file_->size(), whole));
}

} // namespace cuedrill::decks
