#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <optional>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace cuedrill::tools {

/// A command line that a verb does not understand; `what()` says why.
class UsageError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// An option of a verb: a switch, or one with a value.
struct Option {
    std::string_view name;  ///< with the two hyphens
    std::string_view value; ///< what its value is called; empty for a switch
    std::string_view help;
};

/// What may stand behind a verb.
struct Syntax {
    std::string_view words; ///< as the usage shows them: "COURSE [TIME]"
    std::size_t least = 0;  ///< how many words there must be
    std::size_t most = 0;   ///< how many there may be
    std::span<const Option> options;
};

/// What stands behind a verb.
class Arguments {
public:
    /// "--option VALUE" and "--option=VALUE" are the same; behind "--" everything is a word.
    /// @throws UsageError
    Arguments(std::span<const std::string> line, const Syntax& syntax);

    /// The word at `place`, from 0; "" if there is none.
    [[nodiscard]] std::string word(std::size_t place) const;
    [[nodiscard]] bool has(std::string_view option) const;
    /// The value of an option; std::nullopt where it does not stand.
    [[nodiscard]] std::optional<std::string> value(std::string_view option) const;

private:
    std::vector<std::string> words_;
    std::map<std::string, std::string, std::less<>> options_;
};

} // namespace cuedrill::tools
