#pragma once

#include <string>

namespace cuedrill::bench {

/// Each measurement runs twice: as the program does it, and as the floor.
inline std::string program_name(const std::string& name)
{
    return name + "/program";
}

inline std::string floor_name(const std::string& name)
{
    return name + "/floor";
}

void register_course_benchmarks();
void register_list_benchmarks();
void register_start_benchmarks();

} // namespace cuedrill::bench
