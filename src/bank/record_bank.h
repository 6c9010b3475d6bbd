#pragma once

#include "bank/edit_flags.h"
#include "platform/desktop.h"
#include "store/course.h"

#include <string>

namespace cuedrill::bank {

/// The one place where records of the open course come into being.
class RecordBank {
public:
    RecordBank(store::Course& course, EditFlags& flags, platform::Desktop& desktop)
        : m_course(course), m_flags(flags), m_desktop(desktop)
    {
    }

    /// Adds a record of the two texts, `question` on the side that is asked, and makes it the current one. It never was
    /// tested, whatever stands in the course already. Showing it is up to the caller.
    /// @return false when nothing was stored: a text is empty (a box says so), or the course refused it (see
    /// `last_refusal`).
    /// @throws common::OverflowError when the course is full or the record's number does not fit 16 bits
    /// @throws platform::DatabaseError when the course cannot be written at all. Nothing is stored in both cases.
    bool Write_QA(const std::string& question, const std::string& answer);

    /// Why the last record that `Write_QA` left out was refused, in words for the user.
    [[nodiscard]] const std::string& last_refusal() const { return m_last_refusal; }

private:
    [[nodiscard]] common::Int16 insert(const std::string& question, const std::string& answer);

    store::Course& m_course;
    EditFlags& m_flags;
    platform::Desktop& m_desktop;
    std::string m_last_refusal;
};

} // namespace cuedrill::bank
