#include "drill/end_of_program.h"

#include "common/errors.h"
#include "store/course_transaction.h"

#include <exception>
#include <string>

namespace cuedrill::drill {

void EndOfProgram::end_program()
{
    std::string failure; // text for the trace
    std::string unkept;
    try {
        if (before_end)
            unkept = before_end();
    } catch (const std::exception& error) {
        unkept = common::words_of(error);
    }
    if (course_.is_in_use()) {
        try {
            params_.save_work_time(clock_.now());
        } catch (const store::OutcomeUnknown& error) {
            failure = std::string("not known whether the work time is stored - ") + error.what();
        } catch (const std::exception& error) {
            // At most a minute of work time is lost, and the end of the program must not show a box.
            failure = "work time not stored - " + common::words_of(error);
        }
    }
    course_.close();
    if (!unkept.empty())
        trace_.write_trace("end_program - " + unkept);
    if (!failure.empty())
        trace_.write_trace("end_program - " + failure);
    throw common::ProgramEnded{};
}

} // namespace cuedrill::drill
