#pragma once

#include "platform/sqlite/connection.h"
#include "platform/sqlite/table_columns.h"

#include <span>

namespace cuedrill::platform::sqlite {

/// Makes the aid indexes of `tables` that the file lacks, or has with another definition, in one transaction. A file
/// that has them all is not written. Where they cannot be written, for want of room or for any other reason but damage,
/// the file stays as it is, and is good to be worked with all the same.
/// @throws DatabaseError (damaged) when the rows cannot be read; what the list of the file's objects throws.
void make_aid_indexes(Connection& connection, std::span<const ExpectedTable> tables);

} // namespace cuedrill::platform::sqlite
