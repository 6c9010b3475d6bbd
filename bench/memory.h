#pragma once

#include "operations.h"

#include <vector>

namespace cuedrill::bench {

/// Runs each operation that needs no window in a process of its own, on a course of `records` records, and prints the
/// peak memory of the process in MB (1000000 bytes). It forks, so call it before a QApplication exists.
/// @return whether all operations succeeded.
bool print_memory(const std::vector<Operation>& operations, int records);

} // namespace cuedrill::bench
