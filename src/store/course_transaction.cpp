#include "store/course_transaction.h"

#include <exception>
#include <string>
#include <utility>

namespace cuedrill::store {
namespace {

using platform::CommitError;
using platform::DatabaseError;

bool find_out(const UnsettledChange& unsettled)
{
    try {
        return unsettled.change.is_stored();
    } catch (const std::exception&) {
        throw OutcomeUnknown(unsettled.failure);
    }
}

/// Settles an earlier transaction. If that fails, throws a plain DatabaseError instead of OutcomeUnknown: the new
/// transaction has not begun, so its caller knows that nothing of it is stored.
Course& settled(Course& course)
{
    try {
        settle(course);
    } catch (const OutcomeUnknown&) {
        const DatabaseError& failure = course.unsettled->failure;
        throw DatabaseError(failure.kind(), failure.code(),
                            std::string(failure.what()) + " It is not known whether the change before this one is "
                                                          "stored, because the course cannot be read again.");
    }
    return course;
}

} // namespace

OutcomeUnknown::OutcomeUnknown(const DatabaseError& failure)
    : DatabaseError(failure.kind(), failure.code(),
                    std::string(failure.what()) +
                        " It is not known whether the change is stored, because the course cannot be read again.")
{
}

CourseTransaction::CourseTransaction(Course& course) : course_(settled(course)), transaction_(course_.database())
{
}

void CourseTransaction::commit(Change change)
{
    try {
        transaction_.commit();
    } catch (const CommitError& error) {
        // Roll back before reading: only then does the engine restore the file from its journal.
        transaction_.undo();
        course_.unsettled = UnsettledChange{std::move(change), error};
        if (!find_out(*course_.unsettled)) {
            course_.unsettled.reset();
            throw;
        }
        course_.unsettled.reset();
    }
}

void settle(Course& course)
{
    if (!course.unsettled)
        return;
    const bool stored = find_out(*course.unsettled);
    const UnsettledChange settled_change = *std::exchange(course.unsettled, std::nullopt);
    if (!stored)
        return;
    if (settled_change.change.when_stored_after_all)
        settled_change.change.when_stored_after_all();
    if (course.when_stored_after_all)
        course.when_stored_after_all();
}

} // namespace cuedrill::store
