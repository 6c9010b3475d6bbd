#pragma once

#include "engine.h"

#include <cstddef>
#include <string>
#include <vector>

namespace cuedrill::bench {

/// Number of lines of the list of all questions, which has a limited length.
[[nodiscard]] std::size_t list_length(int records);

/// The lines of the list of all questions.
/// @param clause the order of the list, such as "order by q".
/// @throws common::Error if the course has no records.
[[nodiscard]] std::vector<std::string> question_lines(Engine& engine, const std::string& clause, bool with_answers);

} // namespace cuedrill::bench
