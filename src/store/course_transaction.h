#pragma once

#include "platform/database.h"
#include "store/course.h"

namespace cuedrill::store {

/// The end of a transaction failed, and the course could not be read again to see whether it is stored.
class OutcomeUnknown : public platform::DatabaseError {
public:
    explicit OutcomeUnknown(const platform::DatabaseError& failure);
};

/// A transaction of the open course that is undone unless it is committed, and whose outcome is found out where the
/// engine cannot tell it.
class CourseTransaction {
public:
    /// Settles what an earlier transaction has left open, and begins.
    /// @throws platform::DatabaseError, also when the earlier one cannot be settled.
    explicit CourseTransaction(Course& course);

    /// Ends the transaction. What it wrote is stored when this returns, also where the engine has reported an error.
    /// @throws platform::DatabaseError when nothing is stored
    /// @throws OutcomeUnknown when the course cannot be read. `change` is then kept for `settle`.
    void commit(Change change);

    /// Undoes it now.
    void undo() noexcept { transaction_.undo(); }

private:
    Course& course_;
    platform::Transaction transaction_;
};

/// Finds out what has become of the last change whose outcome was unknown, if there is one, and takes it into memory
/// when it is stored.
/// @throws OutcomeUnknown when the course still cannot be read.
void settle(Course& course);

} // namespace cuedrill::store
