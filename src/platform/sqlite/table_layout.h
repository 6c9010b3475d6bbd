#pragma once

#include "platform/database.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace cuedrill::platform::sqlite {

/// `name` as an identifier of SQL.
[[nodiscard]] std::string quoted_name(std::string_view name);

/// How a table of the program is laid down in the file, and where its columns are found.
class TableLayout {
public:
    static constexpr std::size_t most_columns = 64;

    /// @throws DatabaseError when the definition is not sound.
    explicit TableLayout(TableDefinition definition);

    [[nodiscard]] const std::string& name() const { return m_definition.name; }
    [[nodiscard]] const std::vector<ColumnDefinition>& columns() const { return m_definition.columns; }
    [[nodiscard]] const std::vector<IndexDefinition>& indexes() const { return m_definition.indexes; }

    /// The position of a column.
    /// @throws DatabaseError when there is none of that name.
    [[nodiscard]] std::size_t column(std::string_view name) const;
    /// The position of the column that an index goes by.
    /// @throws DatabaseError when there is no index of that name.
    [[nodiscard]] std::size_t index_column(std::string_view index) const;
    /// The column of the primary index; nothing where there is none.
    [[nodiscard]] std::optional<std::size_t> primary_column() const { return m_primary; }
    /// The column that the engine numbers.
    [[nodiscard]] std::optional<std::size_t> automatic_column() const { return m_automatic; }

    /// `value` in the form in which the column stores it.
    /// @throws DatabaseError (constraint) when it is of another type, too long or out of range.
    [[nodiscard]] Value stored_form(std::size_t position, Value value) const;

    /// The statements that make the table and its indexes.
    [[nodiscard]] std::vector<std::string> create_statements() const;

private:
    [[nodiscard]] std::string column_text(const ColumnDefinition& column) const;

    TableDefinition m_definition;
    std::optional<std::size_t> m_primary;
    std::optional<std::size_t> m_automatic;
};

} // namespace cuedrill::platform::sqlite
