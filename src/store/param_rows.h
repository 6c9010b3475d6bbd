#pragma once

#include "common/date_time.h"
#include "platform/database.h"

#include <functional>
#include <map>
#include <span>
#include <string>
#include <string_view>

namespace cuedrill::store {

/// A row of `params` as it is stored; what is missing is null.
struct ParamRow {
    platform::Value date_value;
    platform::Value string_value;
    platform::Value number_value;
};

/// Rows of `params` by the keys that they were asked for with.
using ParamRows = std::map<std::string, ParamRow, std::less<>>;

/// The rows with these keys, found without regard to case by one statement; a key without a row is left out. Other rows
/// are not read, however many a file may hold.
/// @throws platform::DatabaseError
[[nodiscard]] ParamRows read_param_rows(platform::Database& database, std::span<const std::string_view> keys);

// Each of these gives one column of the row `key` its value. The row is found without regard to case and keeps its key
// and its other columns; where there is none, it is added with `key` as it is spelled here.
// They throw platform::DatabaseError; nothing is stored then.

void store_number(platform::Database& database, const std::string& key, double number);
void store_text(platform::Database& database, const std::string& key, const std::string& text);
void store_date(platform::Database& database, const std::string& key, common::DateTime date);

} // namespace cuedrill::store
