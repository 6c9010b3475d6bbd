#pragma once

#include "platform/settings_store.h"

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace cuedrill::fakes {

/// A settings store in memory, keyed by "application/section/key".
class FakeSettings : public platform::SettingsStore {
public:
    std::map<std::string, std::string, std::less<>> values;
    /// Text of the error that reading (writing) throws; empty for success.
    std::string read_failure;
    std::string write_failure;

    [[nodiscard]] std::optional<std::string> get(std::string_view application, std::string_view section,
                                                 std::string_view key) const override;

    void set(std::string_view application, std::string_view section, std::string_view key,
             std::string_view value) override;

    static std::string full_key(std::string_view application, std::string_view section, std::string_view key);
};

} // namespace cuedrill::fakes
