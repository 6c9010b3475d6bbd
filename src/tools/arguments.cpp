#include "tools/arguments.h"

#include <algorithm>

namespace cuedrill::tools {
namespace {

const Option& option_named(std::string_view name, const Syntax& syntax)
{
    const auto found = std::find_if(syntax.options.begin(), syntax.options.end(),
                                    [name](const Option& option) { return option.name == name; });
    if (found == syntax.options.end())
        throw UsageError("There is no option " + std::string(name) + ".");
    return *found;
}

} // namespace

Arguments::Arguments(std::span<const std::string> line, const Syntax& syntax)
{
    bool only_words = false;
    for (std::size_t i = 0; i < line.size(); ++i) {
        const std::string& part = line[i];
        if (only_words || !part.starts_with("--")) {
            words_.push_back(part);
            continue;
        }
        if (part == "--") {
            only_words = true;
            continue;
        }
        const std::size_t equals = part.find('=');
        const Option& option = option_named(std::string_view(part).substr(0, equals), syntax);
        if (option.value.empty() && equals != std::string::npos)
            throw UsageError("The option " + std::string(option.name) + " takes no value.");
        std::string value;
        if (equals != std::string::npos)
            value = part.substr(equals + 1);
        else if (!option.value.empty() && ++i < line.size())
            value = line[i];
        if (!option.value.empty() && value.empty())
            throw UsageError("The option " + std::string(option.name) + " needs a value.");
        if (!options_.emplace(option.name, value).second)
            throw UsageError("The option " + std::string(option.name) + " stands twice.");
    }
    if (words_.size() < syntax.least)
        throw UsageError("Something is missing.");
    if (words_.size() > syntax.most)
        throw UsageError("There is too much: " + words_[syntax.most] + ".");
}

std::string Arguments::word(std::size_t place) const
{
    return place < words_.size() ? words_[place] : std::string();
}

bool Arguments::has(std::string_view option) const
{
    return options_.contains(option);
}

std::optional<std::string> Arguments::value(std::string_view option) const
{
    const auto found = options_.find(option);
    return found == options_.end() ? std::nullopt : std::optional(found->second);
}

} // namespace cuedrill::tools
