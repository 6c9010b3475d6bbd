#include "drill/mode.h"

#include "drill/drill_state.h"
#include "drill/edit_flags.h"

namespace cuedrill::drill {

Mode mode_of(std::int64_t records, const EditFlags& flags, const DrillState& state)
{
    if (flags.new_mode)
        return Mode::new_record;
    if (flags.edit_mode)
        return Mode::edit_record;
    if (records == 0)
        return Mode::empty_course;
    if (!state.shown.is_question())
        return Mode::nothing;
    return state.answer_revealed ? Mode::answer : Mode::question;
}

} // namespace cuedrill::drill
