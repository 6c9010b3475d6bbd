#pragma once

#include "platform/database.h"

#include <string>
#include <vector>

namespace cuedrill::keep {

/// What the records of an open course hold that this program would never write, in sentences; empty for nothing.
/// @throws platform::DatabaseError
[[nodiscard]] std::vector<std::string> broken_rules(platform::Database& course);

} // namespace cuedrill::keep
