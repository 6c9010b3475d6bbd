#pragma once

#include <exception>
#include <new>
#include <stdexcept>
#include <string>

namespace cuedrill::common {

/// Base of all errors that the program itself raises; `what()` is a sentence for the user.
class Error : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// A value does not fit into 16 bits. Thrown before anything is written.
class OverflowError : public Error {
public:
    using Error::Error;
};

/// An index outside a fixed table or list ("Subscript out of range").
class OutOfRangeError : public Error {
public:
    using Error::Error;
};

/// The text of `error` for the user: its own, or a sentence if the system gives only a name.
[[nodiscard]] inline std::string words_of(const std::exception& error)
{
    return dynamic_cast<const std::bad_alloc*>(&error) != nullptr ? "There is not enough memory." : error.what();
}

/// Thrown to leave the program from anywhere. Deliberately not derived from std::exception, so that no error handler
/// swallows it; only the event guard catches it.
struct ProgramEnded {};

} // namespace cuedrill::common
