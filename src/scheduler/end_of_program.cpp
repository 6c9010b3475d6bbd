#include "scheduler/end_of_program.h"

#include "common/errors.h"

#include <exception>
#include <string>

namespace cuedrill::scheduler {

void EndOfProgram::end_program()
{
    std::string failure;
    if (m_course.is_in_use()) {
        try {
            m_params.save_work_time(m_clock.now());
        } catch (const std::exception& error) {
            // Nothing but the last minute of work time is lost, and the end of the program asks nothing.
            failure = error.what();
        }
    }
    m_course.close();
    if (!failure.empty())
        m_trace.write_trace("end_program - work time not stored - " + failure);
    throw common::ProgramEnded{};
}

} // namespace cuedrill::scheduler
