#pragma once

#include "tools/statistics/course_statistics.h"

#include <string>

namespace cuedrill::tools {

/// The statistics as one web page that needs nothing else: its pictures and its style are in it.
[[nodiscard]] std::string html_page(const CourseStatistics& statistics);

} // namespace cuedrill::tools
