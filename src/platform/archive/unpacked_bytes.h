#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

namespace cuedrill::platform::archive {

/// Collects unpacked bytes and refuses more than a harmless file unpacks to.
class UnpackedBytes {
public:
    /// More bytes than this may come out only in proportion to the packed ones.
    static constexpr std::uint64_t always_allowed = 8ULL * 1024 * 1024;
    /// The most unpacked bytes per packed byte. Tables of texts shrink to a tenth at best; a file that was made to fill
    /// the memory reaches a thousand.
    static constexpr std::uint64_t most_per_packed_byte = 200;

    /// @param name of what is unpacked, for error texts.
    /// @param packed number of packed bytes.
    /// @param longest the most bytes that may come out.
    UnpackedBytes(std::string_view name, std::uint64_t packed, std::size_t longest);

    /// Checks a size that the file states, and makes room for it.
    /// @throws common::Error when so many bytes may not come out.
    void expect(std::uint64_t size);
    /// @throws common::Error when these bytes are too many.
    void add(std::string_view bytes);

    [[nodiscard]] std::size_t size() const { return bytes_.size(); }
    [[nodiscard]] std::string take() { return std::move(bytes_); }

private:
    void require_allowed(std::uint64_t size) const;

    std::string name_;
    std::uint64_t packed_;
    std::size_t longest_;
    std::string bytes_;
};

/// The text of an error about `name`: "The file "media" in the package is damaged." is made of "is damaged".
[[nodiscard]] std::string about_entry(std::string_view name, std::string_view what);

} // namespace cuedrill::platform::archive
