#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace cuedrill::platform::archive {

/// The largest window that a frame may need, as a power of two: 128 MiB, the limit that the format's own tools have
/// unless they are told otherwise.
inline constexpr int most_window_log = 27;

/// See `Archives::unpack_zstandard`.
[[nodiscard]] std::string unpack_zstandard(std::string_view frames, std::size_t longest);

} // namespace cuedrill::platform::archive
