#include "platform/sqlite/support.h"

namespace cuedrill::platform::sqlite::test {
namespace {

using Transactions = CourseTest;

TEST_F(Transactions, KeepWhatIsCommitted)
{
    {
        Transaction transaction(database);
        add("one");
        transaction.commit();
    }
    reopen();
    EXPECT_EQ(count(database), 1);
}

TEST_F(Transactions, UndoWhatIsNot)
{
    {
        const Transaction transaction(database);
        add("one");
    }
    EXPECT_EQ(count(database), 0);
}

TEST_F(Transactions, AnInnerOneIsUndoneByItself)
{
    Transaction outer(database);
    add("kept");
    {
        const Transaction inner(database);
        add("undone");
        Transaction innermost(database);
        add("undone as well");
        innermost.commit();
    }
    {
        Transaction inner(database);
        add("kept too");
        inner.commit();
    }
    outer.commit();
    EXPECT_EQ(count(database), 2);
    EXPECT_EQ(count(database, "Select count(0) from qa where q like 'kept*'"), 2);
}

// The engine takes the row for a good one, and its entry in an index may stand at a wrong place.
TEST_F(Transactions, AreUndoneAsAWholeAfterAComparisonThatFailed)
{
    add("before");
    {
        Transaction transaction(database);
        add("one");
        compare.fail = true;
        EXPECT_EQ(error_words(DatabaseErrorKind::other, [&] { add("two"); }), "Texts could not be compared.");
        compare.fail = false;
        EXPECT_EQ(error_words(DatabaseErrorKind::other, [&] { add("three"); }), "The changes before were undone.");
        EXPECT_EQ(error_words(DatabaseErrorKind::other, [&] { transaction.commit(); }),
                  "The changes before were undone.");
    }
    EXPECT_EQ(count(database), 1);
    add("afterwards");
    EXPECT_EQ(count(database), 2);
}

TEST_F(Transactions, HoldTheWriteLockFromTheStart)
{
    const Transaction transaction(database);
    SqliteDatabase second(compare, std::chrono::milliseconds(0));
    error_words(DatabaseErrorKind::locked, [&] { second.open(path, tables()); });
}

TEST_F(Transactions, WaitForNobodyAtTheBeginning)
{
    RawConnection other(path);
    other.run("BEGIN IMMEDIATE");
    EXPECT_EQ(error_words(DatabaseErrorKind::locked, [&] { database.begin(); }), "Another program is using it.");
    other.run("ROLLBACK");
    database.begin();
    database.rollback();
}

TEST_F(Transactions, ACommitThatFailsIsUndoneByTheGuard)
{
    RawConnection reader(path);
    {
        Transaction transaction(database);
        add("one");
        reader.run("BEGIN; SELECT count(*) FROM qa");
        error_words(DatabaseErrorKind::locked, [&] { transaction.commit(); });
        reader.run("ROLLBACK");
    }
    EXPECT_EQ(count(database), 0);
    EXPECT_EQ(add("two"), 1);
}

TEST_F(Transactions, CommitNeedsOne)
{
    error_words(DatabaseErrorKind::other, [&] { database.commit(); });
    database.rollback();
    EXPECT_EQ(add("one"), 1);
}

TEST_F(Transactions, AFullDiskIsReportedAndUndoneByTheGuards)
{
    add("before");
    // Makes the engine itself refuse to let the file grow, as the system does on a full disk.
    EXPECT_GT(count(database, "PRAGMA max_page_count = 1"), 0);
    {
        const Transaction outer(database);
        const Transaction inner(database);
        database.execute("update qa set a = 'undone'");
        EXPECT_EQ(error_words(DatabaseErrorKind::full,
                              [&] {
                                  for (int i = 0; i < 1000; ++i)
                                      add(std::string(200, 'x'), std::string(200, 'y'));
                              }),
                  "There is no room left on the disk.");
    }
    EXPECT_EQ(count(database), 1);
    EXPECT_EQ(count(database, "Select count(0) from qa where a = 'answer'"), 1);
    database.execute("update qa set a = 'short'");
    EXPECT_EQ(count(database, "Select count(0) from qa where a = 'short'"), 1) << "what fits is still written";
}

TEST_F(Transactions, OneThatTheEngineUndidTakesNoMoreWrites)
{
    add("before");
    Transaction outer(database);
    // "or rollback" makes the engine roll back the whole transaction at the first constraint that fails.
    error_words(DatabaseErrorKind::constraint, [&] { database.execute("update or rollback qa set q_fails = 40000"); });
    EXPECT_EQ(error_words(DatabaseErrorKind::other, [&] { database.execute("update qa set a = 'alone'"); }),
              "The changes before were undone.");
    error_words(DatabaseErrorKind::other, [&] { database.begin(); });
    error_words(DatabaseErrorKind::other, [&] { outer.commit(); });
    database.rollback();
    database.execute("update qa set a = 'again'");
    EXPECT_EQ(count(database, "Select count(0) from qa where a = 'again'"), 1);
}

TEST_F(Transactions, AComparisonThatFailsUndoesTheWrite)
{
    add("one");
    {
        Transaction transaction(database);
        compare.fail = true;
        error_words(DatabaseErrorKind::other, [&] { add("two"); });
        compare.fail = false;
    }
    EXPECT_EQ(count(database), 1);
    EXPECT_EQ(count(database, "Select count(0) from qa where q = 'one'"), 1);
}

} // namespace
} // namespace cuedrill::platform::sqlite::test
