#pragma once

#include "operations.h"

#include <vector>

namespace cuedrill::bench {

/// Runs each operation that needs no window in a process of its own, on a course of `records` records, and prints the
/// most memory that the process held, in MB of 1000000 bytes. To be called before there is a QApplication.
/// @return whether all of them have done what they should.
bool print_memory(const std::vector<Operation>& operations, int records);

} // namespace cuedrill::bench
