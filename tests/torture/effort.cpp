#include "torture/effort.h"

#include <algorithm>
#include <cstdlib>
#include <iostream>

namespace cuedrill::torture {
namespace {

std::string variable(const char* name)
{
    const char* const value = std::getenv(name);
    return value == nullptr ? std::string() : std::string(value);
}

#if defined(__SANITIZE_ADDRESS__)
constexpr double part_of_usual = 0.1;
#else
constexpr double part_of_usual = 1;
#endif

} // namespace

std::uint64_t seed()
{
    const std::string text = variable("CUEDRILL_TORTURE_SEED");
    return text.empty() ? 1 : std::strtoull(text.c_str(), nullptr, 10);
}

int effort(int usual)
{
    const std::string text = variable("CUEDRILL_TORTURE_EFFORT");
    const double factor = text.empty() ? part_of_usual : std::strtod(text.c_str(), nullptr);
    return std::max(static_cast<int>(usual * factor), 1);
}

bool is_broken(std::string_view defect)
{
    return variable("CUEDRILL_TORTURE_BREAK") == defect;
}

void report(std::string_view harness, std::initializer_list<std::pair<std::string_view, std::int64_t>> figures)
{
    std::cout << "torture: " << harness << " seed=" << seed();
    for (const auto& [name, figure] : figures)
        std::cout << ' ' << name << '=' << figure;
    std::cout << std::endl;
}

} // namespace cuedrill::torture
