#pragma once

#include "platform/database.h"

#include <string>
#include <string_view>
#include <vector>

namespace cuedrill::store {

/// The most characters (code points) of a question, an answer, or a text parameter.
inline constexpr int longest_text = 200;

/// @throws platform::DatabaseError (constraint) when a text of `column` has more characters than `longest_text`.
void check_length(std::string_view column, std::string_view text);

/// The tables that every course holds: `params` and `qa`.
const std::vector<platform::TableSchema>& course_tables();

/// Adds the table `params` to a file being created.
/// @throws platform::DatabaseError
void create_params_table(platform::Database& database);

/// Adds the table `qa` to a file being created.
/// @throws platform::DatabaseError
void create_qa_table(platform::Database& database);

/// Creates a course without records at `path`, where nothing of that name may exist, and leaves it open.
/// @throws platform::DatabaseError; nothing is left behind then.
void create_course_db(platform::Database& database, const std::string& path);

} // namespace cuedrill::store
