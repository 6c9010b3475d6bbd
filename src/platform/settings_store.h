#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace cuedrill::platform {

/// Per-user settings that do not belong to a course: texts by application, section and key.
class SettingsStore {
public:
    virtual ~SettingsStore() = default;

    /// The stored text; std::nullopt if the key is absent.
    /// @throws common::Error when the store cannot be read.
    [[nodiscard]] virtual std::optional<std::string> get(std::string_view application, std::string_view section,
                                                         std::string_view key) const = 0;

    /// Stores `value` durably.
    /// @throws common::Error when the store cannot be written.
    virtual void set(std::string_view application, std::string_view section, std::string_view key,
                     std::string_view value) = 0;
};

} // namespace cuedrill::platform
