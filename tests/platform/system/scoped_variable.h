#pragma once

#include <cstdlib>
#include <optional>
#include <string>
#include <utility>

namespace cuedrill::platform::system {

/// Sets an environment variable (nullptr: unsets it) while an object of this class lives.
class ScopedVariable {
public:
    ScopedVariable(std::string name, const char* value) : name_(std::move(name))
    {
        if (const char* const before = std::getenv(name_.c_str()))
            before_ = before;
        assign(value);
    }
    ScopedVariable(const ScopedVariable&) = delete;
    ScopedVariable& operator=(const ScopedVariable&) = delete;
    ~ScopedVariable() { assign(before_ ? before_->c_str() : nullptr); }

    void assign(const char* value) const
    {
        if (value != nullptr)
            ::setenv(name_.c_str(), value, 1);
        else
            ::unsetenv(name_.c_str());
    }

private:
    std::string name_;
    std::optional<std::string> before_;
};

} // namespace cuedrill::platform::system
