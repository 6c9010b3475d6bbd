#pragma once

#include "platform/database.h"
#include "store/course.h"

namespace cuedrill::store {

/// A commit failed, and the course could not be read to find out whether it is stored.
class OutcomeUnknown : public platform::DatabaseError {
public:
    explicit OutcomeUnknown(const platform::DatabaseError& failure);
};

/// A transaction of the open course. It is rolled back unless it is committed. If the commit fails, the course is read
/// to find out whether it is stored.
class CourseTransaction {
public:
    /// Settles the outcome of an earlier transaction, if it is unknown, and begins.
    /// @throws platform::DatabaseError, also when the earlier one cannot be settled.
    explicit CourseTransaction(Course& course);

    /// Commits. When this returns, the changes are stored, even if the engine has reported an error.
    /// @throws platform::DatabaseError when nothing is stored
    /// @throws OutcomeUnknown when the course cannot be read. `change` is then kept for `settle`.
    void commit(Change change);

    /// Rolls it back now.
    void undo() noexcept { transaction_.undo(); }

private:
    Course& course_;
    platform::Transaction transaction_;
};

/// Finds out the outcome of the last change if it is unknown. If the change is stored, updates memory and calls
/// `Course::when_stored_after_all`.
/// @throws OutcomeUnknown if the course still cannot be read; whatever that hook throws, when memory is updated.
void settle(Course& course);

} // namespace cuedrill::store
