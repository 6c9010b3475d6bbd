#pragma once

#include <array>
#include <cstddef>

namespace cuedrill::scheduler {

inline constexpr int highest_level = 10;

/// A length of time in days.
constexpr double duration(int days, int hours, int minutes, int seconds)
{
    return days + hours / 24.0 + minutes / 1440.0 + seconds / 86400.0;
}

/// How long a question of each level must rest. A question of level i is mature when `dead_time(i)` has passed since
/// its last test, and a success after that time lifts it to level i + 1.
class DeadTimes {
public:
    /// Fills the table; done once, at the start of the program.
    void init_dead_time_array();

    /// Days that a question of `level` rests.
    /// @throws common::OutOfRangeError for a level outside 0 to 9.
    [[nodiscard]] double dead_time(int level) const;

    /// Days that must pass before a question that was shown without a verdict is shown again.
    [[nodiscard]] double unanswered_dead_time() const { return unanswered_dead_time_; }

    /// The level that a success after `elapsed` days proves, 0 to 10.
    [[nodiscard]] int proven_level(double elapsed) const;

    static constexpr int count = 10;

private:
    std::array<double, count> dead_time_array_{};
    double unanswered_dead_time_ = 0;
};

} // namespace cuedrill::scheduler
