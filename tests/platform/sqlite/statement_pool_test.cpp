#include "platform/sqlite/connection.h"
#include "platform/sqlite/support.h"

namespace cuedrill::platform::sqlite::test {
namespace {

class Pool : public CourseTest {
protected:
    Pool() { database.close(); }

    std::shared_ptr<Connection> connection = std::make_shared<Connection>(path, compare, std::chrono::milliseconds(0));
};

TEST_F(Pool, UsesAStatementAgain)
{
    Statement& first = connection->pool().take("SELECT 1");
    Statement& second = connection->pool().take("SELECT 1");
    EXPECT_NE(&first, &second) << "one that is in use is nobody else's";
    connection->pool().give_back(first);
    EXPECT_EQ(&connection->pool().take("SELECT 1"), &first);
}

TEST_F(Pool, KeepsALimitedNumber)
{
    const StatementLease held(connection, "SELECT 'held'");
    for (int i = 0; i < 100; ++i)
        const StatementLease lease(connection, "SELECT " + std::to_string(i));
    EXPECT_EQ(connection->pool().size(), StatementPool::most_idle + 1);
    EXPECT_TRUE(held.get().step());
}

TEST_F(Pool, ALeaseMayOutliveTheConnection)
{
    const StatementLease lease(connection, "SELECT 1");
    connection->close();
    error_words(DatabaseErrorKind::other, [&] { static_cast<void>(lease.get()); });
}

TEST_F(Pool, AFileThatCannotBeOpenedIsReported)
{
    error_words(DatabaseErrorKind::other,
                [&] { const Connection none(folder / "none.crs", compare, std::chrono::milliseconds(0)); });
}

} // namespace
} // namespace cuedrill::platform::sqlite::test
