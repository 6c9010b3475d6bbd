#include "platform/sqlite/table_columns.h"

#include "common/text.h"
#include "platform/sqlite/engine_error.h"
#include "platform/sqlite/engine_functions.h"
#include "platform/sqlite/statement.h"

#include <memory>
#include <sqlite3.h>

namespace cuedrill::platform::sqlite {
namespace {

struct CloseDatabase {
    void operator()(sqlite3* db) const { sqlite3_close_v2(db); }
};

std::unique_ptr<sqlite3, CloseDatabase> open_in_memory()
{
    sqlite3* db = nullptr;
    const int code = sqlite3_open_v2(":memory:", &db, SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX, nullptr);
    std::unique_ptr<sqlite3, CloseDatabase> opened(db);
    if (code != SQLITE_OK)
        throw database_error(code, 0, sqlite3_errstr(code));
    return opened;
}

/// Fills in the declared type, the collation and whether the column is AUTOINCREMENT.
void read_declaration(sqlite3* db, const std::string& table, TableColumn& column)
{
    const char* type = nullptr;
    const char* collation = nullptr;
    int not_null = 0;
    int primary = 0;
    int numbered = 0;
    const int code = sqlite3_table_column_metadata(db, "main", table.c_str(), column.name.c_str(), &type, &collation,
                                                   &not_null, &primary, &numbered);
    if (code != SQLITE_OK)
        throw_engine_error(db, code);
    column.type = type == nullptr ? "" : type;
    column.collation = collation == nullptr ? "" : collation;
    column.numbered = numbered != 0;
}

} // namespace

std::string quoted_name(std::string_view name)
{
    return '"' + common::replace_all(name, "\"", "\"\"") + '"';
}

bool TableColumn::holds_text() const
{
    return common::equal_ascii(type, "TEXT");
}

std::vector<TableColumn> columns_of(sqlite3* db, TextRules& rules, const std::string& table)
{
    constexpr int name = 1;
    constexpr int default_value = 4;
    constexpr int place_in_primary_key = 5;
    constexpr int hidden = 6;
    std::vector<TableColumn> columns;
    Statement found(db, rules, "PRAGMA main.table_xinfo(" + quoted_name(table) + ")");
    while (found.step()) {
        TableColumn& column = columns.emplace_back();
        column.name = found.text(name);
        column.place_in_key = found.integer(place_in_primary_key);
        column.computed =
            found.integer(hidden) != 0 || !std::holds_alternative<std::monostate>(found.value(default_value));
    }
    for (TableColumn& column : columns)
        read_declaration(db, table, column);
    return columns;
}

std::string collation_of_key(sqlite3* db, TextRules& rules, const std::string& table)
{
    Statement key(db, rules,
                  "SELECT place.coll FROM pragma_index_list(?1, 'main') AS one, "
                  "pragma_index_xinfo(one.name, 'main') AS place WHERE one.origin = 'pk' AND place.key = 1");
    const Value name = table;
    key.bind(1, name);
    return key.step() ? key.text(0) : std::string();
}

std::vector<ExpectedTable> expected_tables(std::span<const TableSchema> schemas, const TextCompare& compare)
{
    const auto db = open_in_memory();
    TextRules rules{compare};
    register_functions(db.get(), rules);
    std::vector<ExpectedTable> tables;
    for (const TableSchema& schema : schemas) {
        Statement(db.get(), rules, schema.table).run();
        for (const std::string& index : schema.indexes)
            Statement(db.get(), rules, index).run();
        for (const AidIndex& aid : schema.aids)
            Statement(db.get(), rules, aid.statement).run();
        tables.push_back({.schema = schema,
                          .columns = columns_of(db.get(), rules, schema.name),
                          .collation_of_key = collation_of_key(db.get(), rules, schema.name)});
    }
    return tables;
}

} // namespace cuedrill::platform::sqlite
