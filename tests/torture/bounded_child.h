#pragma once

#include <functional>
#include <string>
#include <vector>

namespace cuedrill::torture {

/// What became of a child process.
struct ChildOutcome {
    std::string words{};     ///< what its work has returned; empty if it died before
    std::string death{};     ///< how it died; empty if it ended by itself
    double seconds = 0;      ///< processor time
    long peak_kilobytes = 0; ///< most memory in use at once
};

/// Most processor time and memory of a child. Generous: they tell an endless loop and a text read whole into memory
/// from work, not fast work from slow.
#if defined(__SANITIZE_ADDRESS__)
inline constexpr unsigned most_child_seconds = 60;
inline constexpr double most_course_seconds = most_child_seconds;
inline constexpr long most_import_kilobytes = 4L * 1024 * 1024;
inline constexpr long most_child_kilobytes = 4L * 1024 * 1024;
#else
inline constexpr unsigned most_child_seconds = 10;
inline constexpr double most_course_seconds = 3;                   ///< to open and use any small course
inline constexpr long most_import_kilobytes = 150'000'000L / 1024; ///< to import a text of any length
inline constexpr long most_child_kilobytes = 256L * 1024;
#endif

/// Does the work in a child process that is killed when it takes more than its processor time.
[[nodiscard]] ChildOutcome run_bounded(const std::function<std::string()>& work);

/// Runs a program in such a child process. What it writes to the descriptor `told_descriptor` are the words.
/// @param line the program's path and its arguments.
/// @param prepare done in the child before the program is started; may change what a program inherits.
[[nodiscard]] ChildOutcome run_program_bounded(const std::vector<std::string>& line,
                                               const std::function<void()>& prepare);

/// Above those that a user of the program may close.
inline constexpr int told_descriptor = 9;

} // namespace cuedrill::torture
