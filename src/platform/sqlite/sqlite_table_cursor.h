#pragma once

#include "platform/database.h"
#include "platform/sqlite/connection.h"
#include "platform/sqlite/cursor_query.h"
#include "platform/sqlite/table_layout.h"

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace cuedrill::platform::sqlite {

/// A new cursor goes by the primary index and stands on the first row. A change of the index keeps the row. A move or
/// a seek drops a row in progress. After a deletion there is no current row, but the moves go on from its place.
class SqliteTableCursor final : public TableCursor {
public:
    SqliteTableCursor(std::shared_ptr<Connection> connection, std::shared_ptr<const TableLayout> layout);

    void set_index(std::string_view name) override;
    void seek(const Value& key) override;
    [[nodiscard]] bool no_match() const override { return m_no_match; }
    void move_first() override;
    void move_next() override;
    void move_previous() override;
    void move_last() override;
    [[nodiscard]] bool bof() const override { return m_bof; }
    [[nodiscard]] bool eof() const override { return m_eof; }
    [[nodiscard]] Value field(std::string_view column) const override;
    void add_new() override;
    void edit() override;
    void set(std::string_view column, Value value) override;
    void update() override;
    void cancel() override;
    void delete_row() override;

private:
    using Row = std::vector<Value>;
    using ColumnSet = std::uint64_t; ///< a bit for each column

    enum class Place { nowhere, on_row, deleted };
    enum class Progress { none, adding, editing };

    /// Makes the first row of the answer the current one; false (and nothing changed) where there is none.
    bool load(CursorQuery query, const Value* first = nullptr, const Value* second = nullptr);
    bool load_next();
    bool load_previous();
    void stand_outside(bool before_first);
    void require_row() const;
    void require_progress() const;
    [[nodiscard]] Value tie_value() const;
    /// Whether several rows may have the same key.
    [[nodiscard]] bool keys_repeat() const { return m_key != m_layout->primary_column(); }
    [[nodiscard]] Statement& writing_statement();
    [[nodiscard]] std::string writing_text() const;
    void write_row();
    [[nodiscard]] bool is_set(std::size_t column) const { return ((m_set >> column) & 1U) != 0; }

    std::shared_ptr<Connection> m_connection;
    std::shared_ptr<const TableLayout> m_layout;
    std::optional<std::size_t> m_key; ///< the column of the current index; nothing for the row id itself
    std::array<std::optional<StatementLease>, cursor_queries> m_queries;
    std::unordered_map<ColumnSet, StatementLease> m_inserts;
    std::unordered_map<ColumnSet, StatementLease> m_updates;
    std::optional<StatementLease> m_delete;

    Place m_place = Place::nowhere;
    bool m_bof = false;
    bool m_eof = false;
    bool m_no_match = false;
    Row m_row;
    std::int64_t m_row_id = 0;

    Progress m_progress = Progress::none;
    Row m_new_row;
    ColumnSet m_set = 0;

    Row m_spare; ///< a row is read into it, so that a failed move changes nothing and buffers are used again
};

} // namespace cuedrill::platform::sqlite
