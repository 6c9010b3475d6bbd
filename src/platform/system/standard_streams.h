#pragma once

namespace cuedrill::platform::system {

/// Occupies the descriptors of those standard streams with which the process was started closed. Otherwise the next
/// file that is opened, such as an export, would get the descriptor of a stream, and messages would be written into it.
/// Reading and writing such a stream fails as before.
void occupy_standard_streams() noexcept;

} // namespace cuedrill::platform::system
