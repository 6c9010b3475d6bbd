#pragma once

#include "engine.h"

#include <cstddef>
#include <string>
#include <vector>

namespace cuedrill::bench {

/// How many lines a list of all questions has.
[[nodiscard]] std::size_t list_length(int records);

/// The lines of the list of all questions in the order of the clause.
[[nodiscard]] std::vector<std::string> question_lines(Engine& engine, const std::string& clause, bool with_answers);

} // namespace cuedrill::bench
