#include "platform/sqlite/support.h"

#include <filesystem>

// Tests what happens to an open course when its file or its disk changes underneath.
namespace cuedrill::platform::sqlite::test {
namespace {

using FileState = CourseTest;

TEST_F(FileState, AMovedFileTakesNoMoreTransactions)
{
    add("one");
    std::filesystem::rename(path, folder / "moved.crs");
    EXPECT_EQ(error_words(DatabaseErrorKind::moved, [&] { database.begin(); }),
              "It was moved or deleted while it was open.");
    error_words(DatabaseErrorKind::moved, [&] { add("two"); });
    error_words(DatabaseErrorKind::moved, [&] { database.execute("delete from qa"); });
    EXPECT_EQ(folder.names(), std::vector<std::string>{"moved.crs"});
}

TEST_F(FileState, ASuccessorOfTheSameNameIsNotWritten)
{
    add("one");
    std::filesystem::rename(path, folder / "moved.crs");
    std::filesystem::copy(folder / "moved.crs", path);
    const std::string successor = bytes_of(path);
    error_words(DatabaseErrorKind::moved, [&] { add("two"); });
    EXPECT_EQ(bytes_of(path), successor);
    EXPECT_EQ(bytes_of(folder / "moved.crs"), successor);
}

TEST_F(FileState, ADeletedFileTakesNoMoreWrites)
{
    std::filesystem::remove(path);
    error_words(DatabaseErrorKind::moved, [&] { add("one"); });
    EXPECT_TRUE(folder.names().empty());
}

// The folder's path leads to a loop of links. stat() then fails, but that does not mean that the course is gone.
TEST_F(FileState, APlaceThatCannotBeLookedAtIsNoMovedFile)
{
    add("one");
    const std::string aside = folder.path() + "-aside";
    std::filesystem::rename(folder.path(), aside);
    std::filesystem::create_symlink(folder.path(), folder.path());
    EXPECT_EQ(error_words(DatabaseErrorKind::input_output, [&] { add("two"); }),
              "The disk could not be read or written.");
    std::filesystem::remove(folder.path());
    std::filesystem::rename(aside, folder.path());
    EXPECT_EQ(add("two"), 2);
}

TEST_F(FileState, AFullDiskKeepsTheCourseAsItWas)
{
    for (int i = 0; i < 50; ++i)
        add("question " + std::to_string(i));
    {
        const FileSizeLimit limit(std::filesystem::file_size(path));
        Transaction transaction(database);
        EXPECT_EQ(error_words(DatabaseErrorKind::full,
                              [&] {
                                  for (int i = 0; i < 2000; ++i)
                                      add(std::string(200, 'x'), std::string(200, 'y'));
                                  transaction.commit();
                              }),
                  "A file would become larger than the system allows.");
    }
    EXPECT_EQ(count(database), 50);
    reopen();
    EXPECT_EQ(count(database), 50);
    EXPECT_EQ(folder.names(), std::vector<std::string>{"course.crs"});
}

// While a box reports the full disk, another program may read or copy the file.
TEST_F(FileState, AFullDiskLeavesNoHalfWrittenFileBehindTheRollback)
{
    add("one");
    const std::string before = bytes_of(path);
    {
        const FileSizeLimit limit(before.size() + 64 * 1024);
        Transaction transaction(database);
        error_words(DatabaseErrorKind::full, [&] {
            for (int i = 0; i < 2000; ++i)
                add(std::string(200, 'x'), std::string(200, 'y'));
            transaction.commit();
        });
    }
    EXPECT_EQ(folder.names(), std::vector<std::string>{"course.crs"});
    EXPECT_TRUE(bytes_of(path) == before) << "the file is not as it was";
}

TEST_F(FileState, AFullDiskEndsACreationWithoutATrace)
{
    database.close();
    std::filesystem::remove(path);
    const FileSizeLimit limit(5000);
    error_words(DatabaseErrorKind::full, [&] { create_course(database, path); });
    EXPECT_TRUE(folder.names().empty());
    EXPECT_FALSE(database.is_open());
}

TEST_F(FileState, AnotherProgramsLockStopsAWriteAndNoMore)
{
    add("one");
    RawConnection other(path);
    other.run("BEGIN IMMEDIATE");
    error_words(DatabaseErrorKind::locked, [&] { add("two"); });
    EXPECT_EQ(count(database), 1) << "reading goes on";
    other.run("COMMIT");
    EXPECT_EQ(add("two"), 2);
}

} // namespace
} // namespace cuedrill::platform::sqlite::test
