#pragma once

#include "common/errors.h"
#include "platform/settings_store.h"

#include <map>
#include <string>

namespace cuedrill::fakes {

/// A settings store in memory, by "application/section/key".
class FakeSettings : public platform::SettingsStore {
public:
    std::map<std::string, std::string, std::less<>> values;
    /// Words of the error that reading (writing) throws; empty for success.
    std::string read_failure;
    std::string write_failure;

    [[nodiscard]] std::optional<std::string> get(std::string_view application, std::string_view section,
                                                 std::string_view key) const override
    {
        if (!read_failure.empty())
            throw common::Error(read_failure);
        const auto found = values.find(full_key(application, section, key));
        return found == values.end() ? std::nullopt : std::optional(found->second);
    }

    void set(std::string_view application, std::string_view section, std::string_view key,
             std::string_view value) override
    {
        if (!write_failure.empty())
            throw common::Error(write_failure);
        values.insert_or_assign(full_key(application, section, key), std::string(value));
    }

    static std::string full_key(std::string_view application, std::string_view section, std::string_view key)
    {
        return std::string(application).append("/").append(section).append("/").append(key);
    }
};

} // namespace cuedrill::fakes
