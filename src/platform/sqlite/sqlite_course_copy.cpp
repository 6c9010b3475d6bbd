#include "platform/sqlite/sqlite_course_copy.h"

#include "platform/sqlite/backup.h"
#include "platform/sqlite/file_checks.h"
#include "platform/sqlite/sqlite_database.h"

#include <chrono>
#include <optional>

namespace cuedrill::platform::sqlite {
namespace {

/// Only this program knows the file, so there is no lock to wait for.
constexpr std::chrono::milliseconds no_wait{0};

/// Gives the source its usual patience back.
class WithoutWaiting {
public:
    explicit WithoutWaiting(Connection& connection) : connection_(connection) { connection_.wait_for_locks(false); }
    WithoutWaiting(const WithoutWaiting&) = delete;
    WithoutWaiting& operator=(const WithoutWaiting&) = delete;
    ~WithoutWaiting() { connection_.wait_for_locks(true); }

private:
    Connection& connection_;
};

} // namespace

SqliteCourseCopy::SqliteCourseCopy(const std::shared_ptr<Connection>& source, const std::string& path,
                                   const TextCompare& compare, std::span<const TableSchema> expected, mode_t mode)
    : path_(new_course_file(path)), compare_(compare), expected_(expected.begin(), expected.end()), source_(source),
      file_(folder_of(path_), TemporaryFile::Start::empty, mode),
      target_(std::make_unique<Connection>(file_.path(), compare, no_wait))
{
    target_->allow_any_time();
    target_->set_up_for_backup();
    backup_ = source_->begin_backup(*target_);
}

SqliteCourseCopy::~SqliteCourseCopy() = default;

bool SqliteCourseCopy::backup_ended() const noexcept
{
    return backup_->ended();
}

bool SqliteCourseCopy::step(int most)
{
    if (complete_)
        return true;
    std::optional<WithoutWaiting> without_waiting;
    if (most != all_pages)
        without_waiting.emplace(*source_);
    // Before the step: if another program writes in between, the step starts again and is not the last one.
    mark_ = source_->mark();
    complete_ = backup_->step(most);
    return complete_;
}

void SqliteCourseCopy::flush()
{
    backup_->end();
    target_->close();
    file_.sync();
}

void SqliteCourseCopy::finish()
{
    {
        SqliteDatabase check(compare_, no_wait);
        check.open(file_.path(), expected_);
    }
    give_name(file_.path(), path_);
}

} // namespace cuedrill::platform::sqlite
