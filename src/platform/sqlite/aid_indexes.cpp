#include "platform/sqlite/aid_indexes.h"

#include "common/text.h"

#include <string>
#include <vector>

namespace cuedrill::platform::sqlite {
namespace {

/// The statements that create one index; none if it exists.
std::vector<std::string> statements_for(Connection& connection, const std::string& table, const AidIndex& aid)
{
    Statement objects =
        connection.prepare("SELECT type, tbl_name, sql FROM main.sqlite_schema WHERE name = ?1 COLLATE NOCASE");
    const Value name = aid.name;
    objects.bind(1, name);
    if (!objects.step())
        return {aid.statement};
    // Something else has this name. It stays, and the course is used without the index.
    if (objects.text(0) != "index" || !common::equal_ascii(objects.text(1), table))
        return {};
    if (objects.text(2) == aid.statement)
        return {};
    // Rebuild an index of the table that has another definition. That loses nothing, because an index holds only what
    // the table holds. Refusing the course would lock the user out over an optimisation, and keeping the index could
    // slow down each verdict for nothing.
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
