#pragma once

#include "tools/arguments.h"

#include <iosfwd>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>

namespace cuedrill::tools {

// Exit codes.
inline constexpr int done = 0;
inline constexpr int not_all_done = 1; ///< nothing or only a part was done
inline constexpr int refused = 2;      ///< also for a command line that is not understood

/// What a verb works with besides its arguments.
struct Surroundings {
    std::ostream& out;          ///< data
    std::ostream& err;          ///< messages
    std::string data_folder;    ///< the program's folder for the user's data; "" for none
    std::string runtime_folder; ///< the program's folder for what lasts no longer than the session; "" for none
    bool shows_progress;        ///< whether somebody watches `err`: on a terminal, long work tells how far it is
};

/// Something that the tool does with a course. Each verb has a file of its own in verbs/ and a line in the table of
/// run_tool.cpp.
struct Verb {
    std::string_view name;
    std::string_view summary; ///< one line
    Syntax syntax;
    std::string_view help; ///< more about it, as lines
    /// @return the exit code.
    /// @throws std::exception for what stops it: the text is printed, and the exit code is `not_all_done`.
    int (*run)(const Arguments& arguments, Surroundings& around);
};

/// Refuses to do what is asked; the text is printed, and the exit code is `refused`.
class Refusal : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

[[nodiscard]] std::span<const Verb> all_verbs();

/// Makes a course of a question text file: what the tool does with two paths and no verb.
int make_course(const std::string& course_name, const std::string& text_path, Surroundings& around);

/// Runs the tool.
/// @param line what stands behind the name of the tool.
/// @return the exit code.
int run_tool(std::span<const std::string> line, Surroundings& around);

} // namespace cuedrill::tools
