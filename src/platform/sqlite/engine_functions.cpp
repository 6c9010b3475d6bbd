#include "platform/sqlite/engine_functions.h"

#include "common/date_time.h"
#include "platform/sqlite/engine_error.h"
#include "platform/sqlite/like_pattern.h"

#include <memory>
#include <optional>
#include <sqlite3.h>
#include <string_view>

namespace cuedrill::platform::sqlite {
namespace {

std::string_view view_of(const void* bytes, int length)
{
    return length > 0 ? std::string_view(static_cast<const char*>(bytes), static_cast<std::size_t>(length))
                      : std::string_view();
}

/// The text of a value: that of a number as the engine writes it; empty for null.
std::string_view text_of(sqlite3_value* value)
{
    const void* const bytes = sqlite3_value_text(value);
    return view_of(bytes, sqlite3_value_bytes(value));
}

bool is_null(sqlite3_value* value)
{
    return sqlite3_value_type(value) == SQLITE_NULL;
}

} // namespace

// Exceptions must not pass through the engine. A comparison that fails still returns a result, but its exception is
// kept and makes the statement fail afterwards. The rollback of the transaction then removes rows that have got to a
// wrong place of an index.
extern "C" {
static int cuedrill_compare(void* context, int length_a, const void* a, int length_b, const void* b) noexcept
{
    auto& rules = *static_cast<TextRules*>(context);
    const std::string_view left = view_of(a, length_a);
    const std::string_view right = view_of(b, length_b);
    try {
        return rules.compare.compare(left, right);
    } catch (...) {
        rules.failure = std::current_exception();
        return left.compare(right);
    }
}

static void cuedrill_cvdate(sqlite3_context* context, int /*count*/, sqlite3_value** arguments) noexcept
{
    try {
        const std::optional<common::DateTime> date = common::parse_date_literal(text_of(arguments[0]));
        if (date)
            sqlite3_result_double(context, date->day_number());
        else
            sqlite3_result_error(context, "invalid date", -1);
    } catch (...) {
        sqlite3_result_error_nomem(context);
    }
}

static void cuedrill_drop_pattern(void* pattern) noexcept
{
    delete static_cast<LikePattern*>(pattern);
}

static void cuedrill_like(sqlite3_context* context, int /*count*/, sqlite3_value** arguments) noexcept
{
    auto& rules = *static_cast<TextRules*>(sqlite3_user_data(context));
    try {
        if (is_null(arguments[0]) || is_null(arguments[1]))
            return;
        const auto* pattern = static_cast<const LikePattern*>(sqlite3_get_auxdata(context, 0));
        std::unique_ptr<LikePattern> compiled;
        if (pattern == nullptr) {
            const std::string_view given = text_of(arguments[0]);
            compiled = std::make_unique<LikePattern>(rules.compare.fold(given), given);
            pattern = compiled.get();
        }
        sqlite3_result_int(context, pattern->matches(rules.compare.fold(text_of(arguments[1]))) ? 1 : 0);
        // The engine deletes it at once if the pattern is not the same for all rows.
        if (compiled != nullptr)
            sqlite3_set_auxdata(context, 0, compiled.release(), cuedrill_drop_pattern);
    } catch (...) {
        rules.failure = std::current_exception();
        sqlite3_result_error(context, "a text could not be matched", -1);
    }
}
}

void register_functions(sqlite3* db, TextRules& rules)
{
    int code = sqlite3_create_collation_v2(db, "CUEDRILL", SQLITE_UTF8, &rules, cuedrill_compare, nullptr);
    if (code != SQLITE_OK)
        throw_engine_error(db, code);
    code = sqlite3_create_function_v2(db, "cvdate", 1, SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_INNOCUOUS, nullptr,
                                      cuedrill_cvdate, nullptr, nullptr, nullptr);
    if (code != SQLITE_OK)
        throw_engine_error(db, code);
    // SQLITE_DIRECTONLY: not allowed within the file's schema. An index or a CHECK there that uses "like" was made with
    // the rules of another program.
    code = sqlite3_create_function_v2(db, "like", 2, SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_DIRECTONLY, &rules,
                                      cuedrill_like, nullptr, nullptr, nullptr);
    if (code != SQLITE_OK)
        throw_engine_error(db, code);
}

} // namespace cuedrill::platform::sqlite
