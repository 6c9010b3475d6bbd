#pragma once

#include "platform/database.h"
#include "platform/sqlite/connection.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace cuedrill::platform::sqlite {

/// The rows of a query, fetched one by one. While it is on a row, nothing can be written through its connection; that
/// ends after the last row, or with the object.
class SqliteRecordset final : public Recordset {
public:
    /// @throws DatabaseError if `sql` is not a single statement that reads rows.
    SqliteRecordset(std::shared_ptr<Connection> connection, std::string_view sql);
    SqliteRecordset(const SqliteRecordset&) = delete;
    SqliteRecordset& operator=(const SqliteRecordset&) = delete;
    ~SqliteRecordset() override { release(); }

    [[nodiscard]] bool bof() const override { return empty_; }
    [[nodiscard]] bool eof() const override { return !on_row_; }
    void move_first() override;
    void move_next() override;
    [[nodiscard]] Value field(std::string_view column) const override;
    [[nodiscard]] Value field(int column) const override;

private:
    void fetch();
    void release() noexcept;
    void require_row() const;

    std::shared_ptr<Connection> connection_;
    StatementLease statement_;
    std::vector<std::string> names_;
    bool on_row_ = false;
    bool empty_ = false;
};

} // namespace cuedrill::platform::sqlite
