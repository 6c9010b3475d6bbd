#include "platform/sqlite/sqlite_recordset.h"

#include "common/text.h"
#include "platform/sqlite/engine_error.h"

#include <algorithm>

namespace cuedrill::platform::sqlite {

SqliteRecordset::SqliteRecordset(std::shared_ptr<Connection> connection, std::string_view sql)
    : connection_(std::move(connection)), statement_(connection_, sql)
{
    require_reading(statement_.get());
    names_ = statement_.get().column_names();
    move_first();
}

void SqliteRecordset::move_first()
{
    release();
    fetch();
    empty_ = !on_row_;
}

void SqliteRecordset::move_next()
{
    require_row();
    fetch();
}

void SqliteRecordset::fetch()
{
    bool found = false;
    try {
        found = statement_.get().step();
    } catch (...) {
        release();
        throw;
    }
    if (!found) {
        release();
    } else if (!on_row_) {
        on_row_ = true;
        connection_->recordset_opened();
    }
}

void SqliteRecordset::release() noexcept
{
    if (!connection_->is_open()) {
        on_row_ = false;
        return;
    }
    statement_.get().reset();
    if (on_row_)
        connection_->recordset_closed();
    on_row_ = false;
}

void SqliteRecordset::require_row() const
{
    static_cast<void>(connection_->handle());
    if (!on_row_)
        throw own_error(DatabaseErrorKind::other, "There is no current row.");
}

Value SqliteRecordset::field(std::string_view column) const
{
    const auto found = std::find_if(names_.begin(), names_.end(),
                                    [&](const std::string& name) { return common::equal_ascii(name, column); });
    if (found == names_.end())
        throw own_error(DatabaseErrorKind::other, "The query gives no column " + std::string(column) + ".");
    return field(static_cast<int>(found - names_.begin()));
}

Value SqliteRecordset::field(int column) const
{
    require_row();
    if (column < 0 || column >= static_cast<int>(names_.size()))
        throw own_error(DatabaseErrorKind::other, "The query gives no column " + std::to_string(column) + ".");
    return statement_.get().value(column);
}

} // namespace cuedrill::platform::sqlite
