#pragma once

#include "platform/database.h"
#include "platform/sound_files.h"
#include "platform/text_compare.h"

#include <chrono>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <sys/types.h>
#include <vector>

namespace cuedrill::platform::sqlite {

class Connection;
class TemporaryFile;
struct ExpectedTable;

/// A course in an SQLite file. Use it from one thread only.
class SqliteDatabase final : public Database {
public:
    /// @param compare the order of all texts in the file; must outlive this object and its recordsets.
    /// @param busy_timeout how long to wait for another program's lock.
    /// @param sound_files if given, a file that was sound when it was closed and has not changed since is not checked
    /// again, and the check of any other file with only the program's own definitions is deferred until after it is
    /// opened. It must outlive this object.
    explicit SqliteDatabase(const TextCompare& compare,
                            std::chrono::milliseconds busy_timeout = std::chrono::seconds(3),
                            SoundFiles* sound_files = nullptr);
    SqliteDatabase(const SqliteDatabase&) = delete;
    SqliteDatabase& operator=(const SqliteDatabase&) = delete;
    ~SqliteDatabase() override;

    /// An error here, in `append_table` or in `finish_creation` ends the creation and leaves nothing behind.
    void create(const std::string& path) override;
    void append_table(const TableSchema& table) override;
    void finish_creation() override;

    void open(const std::string& path, std::span<const TableSchema> expected) override;
    /// Opens a file that may be damaged, for reading only. Only what must be known for reading is checked: that it is a
    /// course, by its header and its tables. A file that is cut short is opened, too. As with any opening, a journal
    /// that a crash has left beside the file is used and removed.
    /// @throws DatabaseError
    void open_for_reading(const std::string& path, std::span<const TableSchema> expected);
    /// All that is wrong with the open file; empty for a sound one.
    [[nodiscard]] std::vector<std::string> findings(std::span<const TableSchema> expected);

    void finish_check() override;
    [[nodiscard]] std::string unstored() const override { return unstored_; }
    [[nodiscard]] std::string mark() override;
    [[nodiscard]] std::unique_ptr<CourseCopy> begin_copy(const std::string& path,
                                                         std::span<const TableSchema> expected) override;
    /// The same for a copy with other permissions.
    [[nodiscard]] std::unique_ptr<CourseCopy> begin_copy(const std::string& path, std::span<const TableSchema> expected,
                                                         mode_t mode);
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
    void check_now_or_later(Connection& connection, std::span<const ExpectedTable> tables, bool with_log);
    void bound_time(Connection& connection) const;
    void note_if_sound() noexcept;
    void order_now_or_later(Connection& connection, std::span<const ExpectedTable> tables);

    const TextCompare& compare_;
    std::chrono::milliseconds busy_timeout_;
    SoundFiles* sound_files_;
    std::shared_ptr<Connection> connection_;
    std::string path_; ///< path of the open course
    std::string unstored_;
    std::int64_t checked_version_ = 0; ///< the engine's data version at the check
    bool checked_ = false; ///< the whole file was found sound, since it was opened or before it was closed last time

    std::unique_ptr<TemporaryFile> new_file_; ///< only while a file is being created
    std::string new_path_;
    std::vector<TableSchema> new_tables_;
};

} // namespace cuedrill::platform::sqlite
