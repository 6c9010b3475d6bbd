#pragma once

#include "platform/database.h"
#include "platform/text_compare.h"

#include <chrono>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace cuedrill::platform::sqlite {

class Connection;
class TemporaryFile;
struct ExpectedTable;

/// A course in a file of the SQLite engine. For one thread only.
class SqliteDatabase final : public Database {
public:
    /// @param compare gives the order of all texts in the file; must outlive the object and its cursors.
    /// @param busy_timeout how long another program's lock is waited for.
    explicit SqliteDatabase(const TextCompare& compare,
                            std::chrono::milliseconds busy_timeout = std::chrono::seconds(3));
    SqliteDatabase(const SqliteDatabase&) = delete;
    SqliteDatabase& operator=(const SqliteDatabase&) = delete;
    ~SqliteDatabase() override;

    /// An error here, in `append_table` or in `finish_creation` ends the creation: nothing is left behind then.
    void create(const std::string& path) override;
    void append_table(const TableSchema& table) override;
    void finish_creation() override;

    void open(const std::string& path, std::span<const TableSchema> expected) override;
    [[nodiscard]] std::string unstored() const override { return unstored_; }
    void close() noexcept override;
    [[nodiscard]] bool is_open() const override { return connection_ != nullptr && new_file_ == nullptr; }

    [[nodiscard]] std::unique_ptr<Recordset> open_recordset(std::string_view sql) override;

    void begin() override;
    void commit() override;
    void rollback() noexcept override;

protected:
    void read(std::string_view sql, std::span<const Value> values, const RowVisitor& visit) override;
    std::int64_t write(std::string_view sql, std::span<const Value> values) override;

private:
    void require_nothing_open() const;
    [[nodiscard]] Connection& require_course() const;
    [[nodiscard]] Connection& require_creation() const;
    void open_checked(const std::string& file, std::span<const ExpectedTable> expected);
    void open_within_bounds(const std::string& file, std::span<const ExpectedTable> expected);
    void order_now_or_later(Connection& connection, std::span<const ExpectedTable> tables);

    const TextCompare& compare_;
    std::chrono::milliseconds busy_timeout_;
    std::shared_ptr<Connection> connection_;
    std::string unstored_;

    std::unique_ptr<TemporaryFile> new_file_; ///< only while a file is being created
    std::string new_path_;
    std::vector<TableSchema> new_tables_;
};

} // namespace cuedrill::platform::sqlite
