#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace cuedrill::drill {

struct DrillState;
struct EditFlags;

/// What the user is doing; decides which controls are enabled.
enum class Mode : std::size_t {
    empty_course, ///< the course has no questions
    nothing,      ///< no question is on display
    question,     ///< a question is on display without its answer
    answer,       ///< the answer is on display, too
    new_record,   ///< a new record is being written
    edit_record   ///< the current record is being changed
};
inline constexpr std::size_t modes = 6;

/// For each mode, whether something is enabled in it.
using InModes = std::array<bool, modes>;

/// The mode in a course with `records` records.
[[nodiscard]] Mode mode_of(std::int64_t records, const EditFlags& flags, const DrillState& state);

} // namespace cuedrill::drill
