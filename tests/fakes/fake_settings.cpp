#include "fakes/fake_settings.h"

#include "common/errors.h"

namespace cuedrill::fakes {

std::optional<std::string> FakeSettings::get(std::string_view application, std::string_view section,
                                             std::string_view key) const
{
    if (!read_failure.empty())
        throw common::Error(read_failure);
    const auto found = values.find(full_key(application, section, key));
    return found == values.end() ? std::nullopt : std::optional(found->second);
}

void FakeSettings::set(std::string_view application, std::string_view section, std::string_view key,
                       std::string_view value)
{
    if (!write_failure.empty())
        throw common::Error(write_failure);
    values.insert_or_assign(full_key(application, section, key), std::string(value));
}

std::string FakeSettings::full_key(std::string_view application, std::string_view section, std::string_view key)
{
    return std::string(application).append("/").append(section).append("/").append(key);
}

} // namespace cuedrill::fakes
