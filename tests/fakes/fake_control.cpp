#include "fakes/fake_control.h"

#include <utility>

namespace cuedrill::fakes {

Journalled::Journalled(std::string own_name, Journal* shared_journal)
    : name(std::move(own_name)), journal(shared_journal)
{
}

void Journalled::note(std::string_view what) const
{
    if (journal != nullptr)
        journal->push_back(name + "." + std::string(what));
}

void Journalled::note(std::string_view property, std::string_view value) const
{
    if (journal != nullptr)
        journal->push_back(name + "." + std::string(property) + "=" + std::string(value));
}

void Journalled::note(std::string_view property, bool value) const
{
    note(property, value ? "true" : "false");
}

void Journalled::note(std::string_view property, const char* value) const
{
    note(property, std::string_view(value));
}

void Journalled::note(std::string_view property, std::int64_t value) const
{
    note(property, std::to_string(value));
}

void Journalled::note(std::string_view property, const std::optional<common::Colour>& colour) const
{
    const auto part = [](std::uint8_t value) { return std::to_string(value); };
    note(property, colour ? part(colour->red) + "," + part(colour->green) + "," + part(colour->blue) : "none");
}

void Journalled::note(std::string_view property, const std::string& value) const
{
    note(property, std::string_view(value));
}

} // namespace cuedrill::fakes
