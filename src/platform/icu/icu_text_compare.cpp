#include "platform/icu/icu_text_compare.h"

#include "common/errors.h"
#include "common/text.h"
#include "platform/icu/icu_text.h"

#include <algorithm>
#include <array>
#include <unicode/uchar.h>
#include <unicode/ucol.h>
#include <unicode/unorm2.h>
#include <unicode/ustring.h>
#include <unicode/utf8.h>

namespace cuedrill::platform::icu {
namespace {

/// Increase when the rules in this file change: a course whose indexes were built under another number is reindexed.
constexpr std::uint8_t rules_revision = 1;

constexpr const char* course_locale = "en_GB";

/// ICU counts in 32 bits, and a folded or UTF-16 text may be several times as long as its source in bytes.
constexpr std::size_t longest_text = std::size_t{1} << 28U;

/// U+FFFD takes three bytes, and no case folding needs more per source byte.
constexpr std::size_t folded_bytes_per_byte = 3;

std::int32_t checked_length(std::string_view text)
{
    if (text.size() > longest_text)
        throw common::Error("The text is too long to be compared.");
    return static_cast<std::int32_t>(text.size());
}

/// A text after simple case folding. Compared texts are fields of a record, so nearly all fit the stack buffer;
/// building an index folds a million of them.
class FoldedText {
public:
    explicit FoldedText(std::string_view text)
    {
        const std::int32_t length = checked_length(text);
        if (text.size() * folded_bytes_per_byte > stack_.size()) {
            heap_.resize(text.size() * folded_bytes_per_byte);
            begin_ = heap_.data();
        }
        const auto* const source = reinterpret_cast<const std::uint8_t*>(text.data());
        // Local copies of the members: otherwise the compiler reloads the members after each byte written.
        auto* const target = reinterpret_cast<std::uint8_t*>(begin_);
        std::size_t size = 0;
        for (std::int32_t at = 0; at < length;) {
            const std::uint8_t byte = source[at];
            if (byte < 0x80) {
                target[size++] = static_cast<std::uint8_t>(byte >= 'A' && byte <= 'Z' ? byte + ('a' - 'A') : byte);
                ++at;
            } else {
                UChar32 point = 0;
                U8_NEXT_OR_FFFD(source, at, length, point);
                const auto folded = static_cast<std::uint32_t>(u_foldCase(point, U_FOLD_CASE_DEFAULT));
                U8_APPEND_UNSAFE(target, size, folded);
            }
        }
        size_ = size;
    }

    FoldedText(const FoldedText&) = delete;
    FoldedText& operator=(const FoldedText&) = delete;

    [[nodiscard]] std::string_view view() const { return {begin_, size_}; }

private:
    // Left uninitialised: clearing it costs more than folding a typical text.
    std::array<char, 1536> stack_; // NOLINT(cppcoreguidelines-pro-type-member-init)
    std::string heap_;
    char* begin_ = stack_.data();
    std::size_t size_ = 0;
};

bool is_ascii(char c)
{
    return static_cast<unsigned char>(c) < 0x80;
}

/// Whether `text` is plainly in normal form C: well-formed, without a character from U+0300 on. The first mark that
/// combines with a letter is U+0300, and no character before it has another form.
bool is_plainly_normal(std::string_view text)
{
    constexpr unsigned char lead_of_0300 = 0xCC;
    return std::all_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < lead_of_0300; }) &&
           common::is_utf8(text);
}

/// `c` in lower case if it is an ASCII letter.
char small_ascii(char c)
{
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c;
}

std::u16string to_utf16(std::string_view text)
{
    const std::int32_t length = checked_length(text);
    std::u16string result(text.size(), u'\0');
    std::int32_t used = 0;
    UErrorCode code = U_ZERO_ERROR;
    u_strFromUTF8WithSub(result.data(), length, &used, text.data(), length, 0xFFFD, nullptr, &code);
    check(code, "read a text");
    result.resize(static_cast<std::size_t>(used));
    return result;
}

/// The result of an ICU function that takes a target, its capacity and a status, and returns the length it needs. Tries
/// the source's length first and calls again with the returned length if that was too short.
template <typename Function>
std::u16string transformed(std::size_t length, const char* doing, Function function)
{
    std::u16string result(length, u'\0');
    UErrorCode code = U_ZERO_ERROR;
    std::int32_t needed = function(result.data(), static_cast<std::int32_t>(result.size()), &code);
    if (code == U_BUFFER_OVERFLOW_ERROR) {
        result.resize(static_cast<std::size_t>(needed));
        code = U_ZERO_ERROR;
        needed = function(result.data(), needed, &code);
    }
    check(code, doing);
    result.resize(static_cast<std::size_t>(needed));
    return result;
}

/// A 32-bit digest (FNV-1a).
class Digest {
public:
    void add(std::uint8_t byte) { value_ = (value_ ^ byte) * 16777619U; }
    void add(const UVersionInfo& version)
    {
        std::for_each(version, version + U_MAX_VERSION_LENGTH, [&](std::uint8_t part) { add(part); });
    }
    [[nodiscard]] std::uint32_t value() const { return value_; }

private:
    std::uint32_t value_ = 2166136261U;
};

std::uint32_t order_version_of(const UCollator* collator, const std::string& locale)
{
    Digest digest;
    digest.add(rules_revision);
    for (const char c : locale)
        digest.add(static_cast<std::uint8_t>(c));
    UVersionInfo version{};
    ucol_getVersion(collator, version);
    digest.add(version);
    ucol_getUCAVersion(collator, version);
    digest.add(version);
    // Case folding depends on the character data, not on the collation data.
    u_getUnicodeVersion(version);
    digest.add(version);
    return digest.value();
}

} // namespace

/// Owns ICU's collator. Comparing does not change it, so threads may share it.
struct IcuTextCompare::Collator {
    explicit Collator(const std::string& locale)
    {
        UErrorCode code = U_ZERO_ERROR;
        handle = ucol_open(locale.c_str(), &code);
        check(code, "load the alphabetical order");
        ucol_setStrength(handle, UCOL_TERTIARY);
    }
    Collator(const Collator&) = delete;
    Collator& operator=(const Collator&) = delete;
    ~Collator() { ucol_close(handle); }

    UCollator* handle = nullptr;
};

IcuTextCompare::IcuTextCompare() : IcuTextCompare(course_locale)
{
}

IcuTextCompare::IcuTextCompare(const std::string& locale)
    : collator_(std::make_unique<const Collator>(locale)), order_version_(order_version_of(collator_->handle, locale))
{
}

IcuTextCompare::~IcuTextCompare() = default;

/// Most texts differ in an ASCII character, and then nothing has to be folded: the texts before it are identical, so
/// both characters begin at the same offset.
bool IcuTextCompare::equal(std::string_view a, std::string_view b) const
{
    const auto [x, y] = std::mismatch(a.begin(), a.end(), b.begin(), b.end(),
                                      [](char one, char other) { return small_ascii(one) == small_ascii(other); });
    if (x == a.end() && y == b.end())
        return true;
    if (x != a.end() && y != b.end() && is_ascii(*x) && is_ascii(*y))
        return false;
    return FoldedText(a).view() == FoldedText(b).view();
}

int IcuTextCompare::compare(std::string_view a, std::string_view b) const
{
    const FoldedText folded_a(a);
    const FoldedText folded_b(b);
    const std::string_view x = folded_a.view();
    const std::string_view y = folded_b.view();
    // UTF-8 bytes sort in the same order as code points.
    const int by_code_point = x.compare(y);
    if (by_code_point == 0)
        return 0;

    UErrorCode code = U_ZERO_ERROR;
    const UCollationResult order = ucol_strcollUTF8(collator_->handle, x.data(), static_cast<std::int32_t>(x.size()),
                                                    y.data(), static_cast<std::int32_t>(y.size()), &code);
    check(code, "compare two texts");
    // The collator ignores some characters and equates others, such as the forms of a letter with a diacritic.
    return order != UCOL_EQUAL ? static_cast<int>(order) : by_code_point;
}

std::string IcuTextCompare::fold(std::string_view text) const
{
    return std::string(FoldedText(text).view());
}

std::string IcuTextCompare::lower(std::string_view text) const
{
    const std::u16string source = to_utf16(text);
    return to_utf8(
        transformed(source.size(), "make small letters", [&](char16_t* target, std::int32_t size, UErrorCode* code) {
            return u_strToLower(target, size, source.data(), static_cast<std::int32_t>(source.size()), "", code);
        }));
}

std::string IcuTextCompare::nfc(std::string_view text) const
{
    if (is_plainly_normal(text))
        return std::string(text);
    UErrorCode loading = U_ZERO_ERROR;
    const UNormalizer2* const normalizer = unorm2_getNFCInstance(&loading);
    check(loading, "load the normal form");
    const std::u16string source = to_utf16(text);
    return to_utf8(
        transformed(source.size(), "normalise a text", [&](char16_t* target, std::int32_t size, UErrorCode* code) {
            return unorm2_normalize(normalizer, source.data(), static_cast<std::int32_t>(source.size()), target, size,
                                    code);
        }));
}

} // namespace cuedrill::platform::icu
