#pragma once

#include <cstdint>
#include <string_view>

namespace cuedrill::decks {

/// The code point of an entity by its name in HTML 4.01, such as "eacute" (case matters); 0 if there is none.
[[nodiscard]] std::uint32_t code_of_entity(std::string_view name);

} // namespace cuedrill::decks
