#include "platform/sqlite/engine_error.h"

#include <cerrno>
#include <gtest/gtest.h>
#include <sqlite3.h>

namespace cuedrill::platform::sqlite::test {
namespace {

struct Case {
    int code;
    int system_error;
    const char* engine_words;
    DatabaseErrorKind kind;
    const char* words;
};

TEST(EngineErrors, HaveWordsForTheUser)
{
    using Kind = DatabaseErrorKind;
    const Case cases[] = {
        {SQLITE_FULL, 0, "", Kind::full, "There is no room left on the disk."},
        {SQLITE_IOERR_WRITE, EDQUOT, "", Kind::full, "There is no room left on the disk."},
        {SQLITE_IOERR_WRITE, EFBIG, "", Kind::full, "A file would become larger than the system allows."},
        {SQLITE_IOERR_FSYNC, EIO, "", Kind::input_output, "The disk could not be read or written."},
        {SQLITE_IOERR_NOMEM, 0, "", Kind::other, "There is not enough memory."},
        {SQLITE_NOMEM, 0, "", Kind::other, "There is not enough memory."},
        {SQLITE_IOERR_CORRUPTFS, EIO, "bad", Kind::input_output, "The disk could not be read or written."},
        {SQLITE_IOERR_FSTAT, EACCES, "", Kind::other, "It is in a folder that you may not enter."},
        {SQLITE_IOERR_FSTAT, ELOOP, "", Kind::input_output, "The disk could not be read or written."},
        {SQLITE_BUSY, 0, "", Kind::locked, "Another program is using it."},
        {SQLITE_LOCKED_SHAREDCACHE, 0, "", Kind::locked, "Another program is using it."},
        {SQLITE_PROTOCOL, 0, "", Kind::locked, "Another program is using it."},
        {SQLITE_READONLY_DBMOVED, 0, "", Kind::moved, "It was moved or deleted while it was open."},
        {SQLITE_READONLY, 0, "", Kind::read_only, "It cannot be written."},
        {SQLITE_READONLY_DIRECTORY, 0, "", Kind::read_only, "It cannot be written."},
        {SQLITE_PERM, 0, "", Kind::read_only, "It cannot be written."},
        {SQLITE_CORRUPT_INDEX, 0, "bad page", Kind::damaged, "It is damaged (bad page)."},
        {SQLITE_NOTADB, 0, "", Kind::not_a_course, "It is not a course."},
        {SQLITE_INTERRUPT, 0, "", Kind::not_a_course, "It would take too long to be looked through."},
        {SQLITE_TOOBIG, 0, "", Kind::damaged, "It holds a text that is too long to be read."},
        {SQLITE_CANTOPEN, 0, "", Kind::other, "It cannot be opened."},
        {SQLITE_CANTOPEN, ENOSPC, "", Kind::full, "There is no room left on the disk."},
        {SQLITE_CANTOPEN, EDQUOT, "", Kind::full, "There is no room left on the disk."},
        {SQLITE_CANTOPEN, EMFILE, "", Kind::other, "Too many files are open."},
        {SQLITE_CANTOPEN, ENFILE, "", Kind::other, "Too many files are open."},
        {SQLITE_CANTOPEN, ENOMEM, "", Kind::other, "There is not enough memory."},
        {SQLITE_CONSTRAINT_CHECK, 0, "CHECK constraint failed: x > 1", Kind::constraint,
         "The row breaks a rule of its table (x > 1)."},
        {SQLITE_CONSTRAINT_UNIQUE, 0, "UNIQUE constraint failed: params.param", Kind::constraint,
         "There is already a row with this value in column param."},
        {SQLITE_CONSTRAINT_CHECK, 0, "CHECK constraint failed: length(\"q\") <= 200", Kind::constraint,
         "The text in column q is too long; 200 characters fit."},
        {SQLITE_CONSTRAINT_CHECK, 0, "CHECK constraint failed: q_fails", Kind::constraint,
         "The number in column q_fails does not fit."},
        {SQLITE_MISMATCH, 0, "datatype mismatch", Kind::constraint,
         "A value is of a type that its column does not take."},
        {SQLITE_ERROR, 0, "no such column: x", Kind::other, "The database engine reports: no such column: x."},
    };
    for (const Case& one : cases) {
        const DatabaseError error = database_error(one.code, one.system_error, one.engine_words);
        EXPECT_EQ(static_cast<int>(error.kind()), static_cast<int>(one.kind)) << one.code;
        EXPECT_STREQ(error.what(), one.words);
        EXPECT_EQ(error.code(), one.code);
    }
}

TEST(FileErrors, HaveWordsForTheUser)
{
    using Kind = DatabaseErrorKind;
    const std::pair<int, Kind> cases[] = {
        {ENOENT, Kind::missing},     {ENOTDIR, Kind::missing}, {EEXIST, Kind::exists}, {EACCES, Kind::read_only},
        {EROFS, Kind::read_only},    {ENOSPC, Kind::full},     {EDQUOT, Kind::full},   {EIO, Kind::input_output},
        {ENAMETOOLONG, Kind::other}, {EFBIG, Kind::full},      {ENOMEM, Kind::other},  {EMFILE, Kind::other}};
    for (const auto& [number, kind] : cases) {
        const DatabaseError error = file_error(number, "Something else.");
        EXPECT_EQ(static_cast<int>(error.kind()), static_cast<int>(kind)) << number;
        EXPECT_EQ(error.code(), 0);
    }
    EXPECT_STREQ(file_error(EFBIG, "").what(), "A file would become larger than the system allows.");
    EXPECT_STREQ(file_error(ENOMEM, "").what(), "There is not enough memory.");
    EXPECT_STREQ(file_error(EMFILE, "Something else.").what(), "Something else.");
}

} // namespace
} // namespace cuedrill::platform::sqlite::test
