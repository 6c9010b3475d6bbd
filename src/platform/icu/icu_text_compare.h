#pragma once

#include "platform/text_compare.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace cuedrill::platform::icu {

/// Text comparison by ICU: simple case folding and the collator of English (United Kingdom), tertiary strength. The
/// const functions are thread-safe; they throw common::Error for a text longer than a quarter of a gigabyte.
class IcuTextCompare : public TextCompare {
public:
    /// @throws common::Error when ICU or its data are not usable.
    IcuTextCompare();

    /// Uses the alphabetical order of another locale. Courses always use the other constructor.
    /// @throws common::Error when ICU cannot provide it.
    explicit IcuTextCompare(const std::string& locale);

    ~IcuTextCompare() override;
    IcuTextCompare(const IcuTextCompare&) = delete;
    IcuTextCompare& operator=(const IcuTextCompare&) = delete;

    [[nodiscard]] bool equal(std::string_view a, std::string_view b) const override;
    [[nodiscard]] int compare(std::string_view a, std::string_view b) const override;
    [[nodiscard]] std::string fold(std::string_view text) const override;
    [[nodiscard]] std::string lower(std::string_view text) const override;
    [[nodiscard]] std::string nfc(std::string_view text) const override;
    [[nodiscard]] std::uint32_t order_version() const override { return order_version_; }

private:
    struct Collator;

    std::unique_ptr<const Collator> collator_;
    std::uint32_t order_version_;
};

} // namespace cuedrill::platform::icu
