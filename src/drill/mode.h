#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace cuedrill::drill {

struct DrillState;
struct EditFlags;

/// What the user is doing, as far as it decides what can be done next.
enum class Mode : std::size_t {
    empty_course, ///< there are no questions
    nothing,      ///< no question is on display
    question,     ///< a question is on display, its answer is not
    answer,       ///< the answer is on display too
    new_record,   ///< a record is being typed
    edit_record   ///< the record on display is being changed
};
inline constexpr std::size_t modes = 6;

/// For each mode, whether something can be done in it.
using InModes = std::array<bool, modes>;

/// What is going on in a course of so many records.
[[nodiscard]] Mode mode_of(std::int64_t records, const EditFlags& flags, const DrillState& state);

} // namespace cuedrill::drill
