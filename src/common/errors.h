#pragma once

#include <exception>
#include <new>
#include <stdexcept>
#include <string>

namespace cuedrill::common {

/// Base of every error that the program itself raises; `what()` is a sentence for the user.
class Error : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// A value does not fit the 16 bits it is kept in. Thrown before anything is written.
class OverflowError : public Error {
public:
    using Error::Error;
};

/// An index outside a fixed table or list ("Subscript out of range").
class OutOfRangeError : public Error {
public:
    using Error::Error;
};

/// What the user is told of `error`: its own words, or a sentence where the system gives no more than a name.
[[nodiscard]] inline std::string words_of(const std::exception& error)
{
    return dynamic_cast<const std::bad_alloc*>(&error) != nullptr ? "There is not enough memory." : error.what();
}

/// Thrown to leave the program from anywhere. It is deliberately no std::exception, so that no error
/// handler swallows it; only the event guard catches it.
struct ProgramEnded {};

} // namespace cuedrill::common
