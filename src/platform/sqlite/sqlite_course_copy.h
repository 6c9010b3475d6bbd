#pragma once

#include "platform/course_copy.h"
#include "platform/database.h"
#include "platform/sqlite/connection.h"
#include "platform/sqlite/new_file.h"
#include "platform/text_compare.h"

#include <memory>
#include <span>
#include <string>
#include <sys/types.h>
#include <vector>

namespace cuedrill::platform::sqlite {

/// A copy of the course of a connection, made with the engine's own means.
class SqliteCourseCopy final : public CourseCopy {
public:
    /// @param source may be closed while the object lives.
    /// @param compare must outlive the object.
    /// @param mode the permissions of the copy.
    /// @throws DatabaseError also when something of that name is there already.
    SqliteCourseCopy(const std::shared_ptr<Connection>& source, const std::string& path, const TextCompare& compare,
                     std::span<const TableSchema> expected, mode_t mode);
    ~SqliteCourseCopy() override;

    [[nodiscard]] bool step(int most) override;
    [[nodiscard]] std::string mark() const override { return mark_; }
    void flush() override;
    void finish() override;
    [[nodiscard]] bool abandoned() const noexcept override { return !complete_ && backup_ended(); }

private:
    [[nodiscard]] bool backup_ended() const noexcept;

    std::string path_;
    const TextCompare& compare_;
    std::vector<TableSchema> expected_;
    std::shared_ptr<Connection> source_;
    TemporaryFile file_; ///< outlives the connection to it
    std::unique_ptr<Connection> target_;
    std::shared_ptr<Backup> backup_;
    std::string mark_;
    bool complete_ = false; ///< all pages are copied
};

} // namespace cuedrill::platform::sqlite
