#pragma once

#include <cstddef>
#include <string>

namespace cuedrill::fakes {

/// The number in four bytes, the most significant one first.
inline std::string big_endian(std::size_t number)
{
    std::string bytes;
    for (unsigned shift = 32; shift > 0; shift -= 8)
        bytes += static_cast<char>((number >> (shift - 8)) & 0xFFU);
    return bytes;
}

/// What the engine appends to the journal of a transaction over several files: the name of the file that lists their
/// journals. The engine deletes that file when it takes it for left over.
inline std::string naming(const std::string& name)
{
    std::size_t sum = 0;
    for (const char c : name)
        sum += static_cast<std::size_t>(static_cast<signed char>(c));
    return big_endian(0x40000000 / 4096 + 1) + name + big_endian(name.size()) + big_endian(sum) +
           "\xD9\xD5\x05\xF9\x20\xA1\x63\xD7";
}

} // namespace cuedrill::fakes
