#include "scheduler/end_of_program.h"

#include "common/errors.h"

#include <string>

namespace cuedrill::scheduler {

void EndOfProgram::end_program()
{
    if (m_course.is_open()) {
        std::string failure;
        try {
            m_params.save_work_time(m_clock.now());
        } catch (const common::Error& error) {
            // Nothing but the last minute of work time is lost, and the end of the program asks nothing.
            failure = error.what();
        }
        m_course.close();
        if (!failure.empty())
            m_trace.write_trace("end_program - work time not stored - " + failure);
    }
    throw common::ProgramEnded{};
}

} // namespace cuedrill::scheduler
