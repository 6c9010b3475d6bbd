#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string_view>

namespace cuedrill::fuzz {

/// Ends the program unless `property` holds; libFuzzer then keeps the input in a file.
inline void require(bool property, const char* words)
{
    if (property)
        return;
    std::fprintf(stderr, "Wrong: %s\n", words);
    std::abort();
}

/// Whether the target puts a fault into what it checks, because CUEDRILL_FUZZ_BREAK is 1. dev/fuzz.sh --self-test runs
/// each target with it, and expects that the fault is found.
inline bool is_broken()
{
    static const char* const value = std::getenv("CUEDRILL_FUZZ_BREAK");
    return value != nullptr && std::strcmp(value, "1") == 0;
}

inline std::string_view text_of(const std::uint8_t* data, std::size_t size)
{
    return size == 0 ? std::string_view() : std::string_view(reinterpret_cast<const char*>(data), size);
}

} // namespace cuedrill::fuzz
