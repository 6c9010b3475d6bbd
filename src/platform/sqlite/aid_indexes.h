#pragma once

#include "platform/sqlite/connection.h"
#include "platform/sqlite/table_columns.h"

#include <span>

namespace cuedrill::platform::sqlite {

/// Creates the aid indexes of `tables` that the file lacks or has with another definition, in one transaction. A file
/// that has them all is not written. If they cannot be written, because the disk is full or for any reason other than
/// damage, the file stays as it is and can be used without them.
/// @throws DatabaseError (damaged) if the rows cannot be read; whatever reading the file's schema throws.
void make_aid_indexes(Connection& connection, std::span<const ExpectedTable> tables);

} // namespace cuedrill::platform::sqlite
