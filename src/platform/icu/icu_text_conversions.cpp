#include "platform/icu/icu_text_conversions.h"

#include "common/errors.h"
#include "platform/icu/icu_text.h"

#include <array>
#include <cstddef>
#include <string_view>
#include <unicode/ucnv.h>
#include <unicode/ucnv_err.h>

namespace cuedrill::platform::icu {
namespace {

/// Whether the code tells of bytes that are no character, after which the conversion can go on.
bool is_about_a_character(UErrorCode code)
{
    return code == U_INVALID_CHAR_FOUND || code == U_ILLEGAL_CHAR_FOUND || code == U_TRUNCATED_CHAR_FOUND ||
           code == U_ILLEGAL_ESCAPE_SEQUENCE || code == U_UNSUPPORTED_ESCAPE_SEQUENCE;
}

class IcuTextConversion : public TextConversion {
public:
    IcuTextConversion(const std::string& encoding, char unreadable) : unreadable_(unreadable)
    {
        UErrorCode code = U_ZERO_ERROR;
        converter_.reset(ucnv_open(encoding.c_str(), &code));
        if (U_FAILURE(code))
            throw common::Error("The character set " + encoding + " is not known.");
        // Without this, ICU puts U+FFFD for bytes that it cannot read, which the text may hold as well.
        ucnv_setToUCallBack(converter_.get(), UCNV_TO_U_CALLBACK_STOP, nullptr, nullptr, nullptr, &code);
        check(code, "prepare the reading of a text");
    }

    [[nodiscard]] std::string convert(std::string_view bytes) override { return convert(bytes, false); }
    [[nodiscard]] std::string finish() override { return convert({}, true); }

private:
    struct Close {
        void operator()(UConverter* converter) const { ucnv_close(converter); }
    };

    std::string convert(std::string_view bytes, bool is_end)
    {
        const char* at = bytes.data();
        const char* const end = at + bytes.size();
        std::string result;
        std::u16string text;
        for (;;) {
            std::array<char16_t, 4096> buffer{};
            char16_t* written = buffer.data();
            UErrorCode code = U_ZERO_ERROR;
            ucnv_toUnicode(converter_.get(), &written, buffer.data() + buffer.size(), &at, end, nullptr,
                           static_cast<UBool>(is_end), &code);
            text.append(buffer.data(), static_cast<std::size_t>(written - buffer.data()));
            if (code == U_BUFFER_OVERFLOW_ERROR)
                continue;
            if (!is_about_a_character(code)) {
                check(code, "read a text");
                return result + to_utf8(text);
            }
            result.append(to_utf8(text)).push_back(unreadable_);
            text.clear();
        }
    }

    std::unique_ptr<UConverter, Close> converter_;
    char unreadable_;
};

} // namespace

std::unique_ptr<TextConversion> IcuTextConversions::begin(const std::string& encoding, char unreadable) const
{
    return std::make_unique<IcuTextConversion>(encoding, unreadable);
}

} // namespace cuedrill::platform::icu
