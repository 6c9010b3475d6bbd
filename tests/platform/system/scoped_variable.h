#pragma once

#include <cstdlib>
#include <optional>
#include <string>
#include <utility>

namespace cuedrill::platform::system {

/// Gives an environment variable a value (nullptr: takes it away) until the end of its own life.
class ScopedVariable {
public:
    ScopedVariable(std::string name, const char* value) : m_name(std::move(name))
    {
        if (const char* const before = std::getenv(m_name.c_str()))
            m_before = before;
        assign(value);
    }
    ScopedVariable(const ScopedVariable&) = delete;
    ScopedVariable& operator=(const ScopedVariable&) = delete;
    ~ScopedVariable() { assign(m_before ? m_before->c_str() : nullptr); }

    void assign(const char* value) const
    {
        if (value != nullptr)
            ::setenv(m_name.c_str(), value, 1);
        else
            ::unsetenv(m_name.c_str());
    }

private:
    std::string m_name;
    std::optional<std::string> m_before;
};

} // namespace cuedrill::platform::system
