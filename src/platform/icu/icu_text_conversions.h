#pragma once

#include "platform/text_conversions.h"

#include <memory>
#include <string>

namespace cuedrill::platform::icu {

/// Conversion by ICU, which knows a character set by any of its usual names.
class IcuTextConversions : public TextConversions {
public:
    [[nodiscard]] std::unique_ptr<TextConversion> begin(const std::string& encoding, char unreadable) const override;
};

} // namespace cuedrill::platform::icu
