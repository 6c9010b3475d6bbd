#include "platform/sqlite/aid_indexes.h"

#include "common/text.h"

#include <string>
#include <vector>

namespace cuedrill::platform::sqlite {
namespace {

/// The statements that bring one index about; none where it is there.
std::vector<std::string> statements_for(Connection& connection, const std::string& table, const AidIndex& aid)
{
    Statement objects =
        connection.prepare("SELECT type, tbl_name, sql FROM main.sqlite_schema WHERE name = ?1 COLLATE NOCASE");
    const Value name = aid.name;
    objects.bind(1, name);
    if (!objects.step())
        return {aid.statement};
    // Something else of this name is somebody's own. It stays, and the course is worked with without the index.
    if (objects.text(0) != "index" || !common::equal_ascii(objects.text(1), table))
        return {};
    if (objects.text(2) == aid.statement)
        return {};
    // An index of the table with another definition is built anew. That is safe, because it holds nothing that the
    // table does not hold, and another version of the program, with another definition, does the same. To refuse the
    // course would keep the user from it for the sake of an aid, and to keep the index could slow each verdict down for
    // nothing.
    return {"DROP INDEX main." + quoted_name(aid.name), aid.statement};
}

} // namespace

void make_aid_indexes(Connection& connection, std::span<const ExpectedTable> tables)
{
    std::vector<std::string> statements;
    for (const ExpectedTable& table : tables) {
        for (const AidIndex& aid : table.schema.aids) {
            for (std::string& statement : statements_for(connection, table.schema.name, aid))
                statements.push_back(std::move(statement));
        }
    }
    if (statements.empty())
        return;
    try {
        connection.begin();
        for (const std::string& statement : statements)
            connection.run(statement);
        connection.commit();
    } catch (const DatabaseError& error) {
        connection.rollback();
        if (error.kind() == DatabaseErrorKind::damaged)
            throw;
    }
}

} // namespace cuedrill::platform::sqlite
