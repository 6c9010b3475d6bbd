#include "torture/script.h"

#include <array>

namespace cuedrill::torture {

Step Script::next()
{
    using enum Operation;
    static constexpr std::array<Operation, 24> operations{
        know,   know,      know,   know,   know_not,     know_not,     undo,   show,
        insert, insert,    insert, change, import_group, import_group, remove, settings,
        invert, work_time, reopen, reopen, reorder,      make_aids,    change, insert};
    constexpr std::uint64_t steps_to_a_reset = 60;
    const std::uint64_t choice = random_();
    const std::uint64_t number = random_() >> 8U;
    if (choice % steps_to_a_reset == 0)
        return {reset_all, number};
    return {operations[(choice / steps_to_a_reset) % operations.size()], number};
}

} // namespace cuedrill::torture
