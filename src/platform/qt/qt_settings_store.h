#pragma once

#include "platform/settings_store.h"

namespace cuedrill::platform::qt {

/// Keeps each section in a file of its own, `<folder>/<application>/<section>.ini`.
class QtSettingsStore final : public SettingsStore {
public:
    /// @param folder the user's configuration folder.
    explicit QtSettingsStore(std::string folder) : folder_(std::move(folder)) {}

    /// The user's configuration folder: $XDG_CONFIG_HOME if it is an absolute path, otherwise ~/.config.
    [[nodiscard]] static std::string default_folder();

    [[nodiscard]] std::optional<std::string> get(std::string_view application, std::string_view section,
                                                 std::string_view key) const override;
    void set(std::string_view application, std::string_view section, std::string_view key,
             std::string_view value) override;

private:
    [[nodiscard]] std::string path(std::string_view application, std::string_view section) const;

    std::string folder_;
};

} // namespace cuedrill::platform::qt
