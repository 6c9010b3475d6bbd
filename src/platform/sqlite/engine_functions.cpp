#include "platform/sqlite/engine_functions.h"

#include "common/date_time.h"
#include "platform/sqlite/engine_error.h"

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

} // namespace

// Nothing may be thrown through the engine. A failed comparison still needs an answer; the flag makes the statement
// fail afterwards, so that no row is kept that was put at a wrong place.
extern "C" {
static int cuedrill_compare(void* context, int length_a, const void* a, int length_b, const void* b) noexcept
{
    auto& order = *static_cast<TextOrder*>(context);
    const std::string_view left = view_of(a, length_a);
    const std::string_view right = view_of(b, length_b);
    try {
        return order.compare.compare(left, right);
    } catch (...) {
        order.failed = true;
        return left.compare(right);
    }
}

static void cuedrill_cvdate(sqlite3_context* context, int /*count*/, sqlite3_value** arguments) noexcept
{
    try {
        const void* text = sqlite3_value_text(arguments[0]);
        const std::optional<common::DateTime> date =
            common::parse_date_literal(view_of(text, sqlite3_value_bytes(arguments[0])));
        if (date)
            sqlite3_result_double(context, date->day_number());
        else
            sqlite3_result_error(context, "invalid date", -1);
    } catch (...) {
        sqlite3_result_error_nomem(context);
    }
}
}

void register_functions(sqlite3* db, TextOrder& order)
{
    int code = sqlite3_create_collation_v2(db, "CUEDRILL", SQLITE_UTF8, &order, cuedrill_compare, nullptr);
    if (code != SQLITE_OK)
        throw_engine_error(db, code);
    code = sqlite3_create_function_v2(db, "cvdate", 1, SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_INNOCUOUS, nullptr,
                                      cuedrill_cvdate, nullptr, nullptr, nullptr);
    if (code != SQLITE_OK)
        throw_engine_error(db, code);
}

} // namespace cuedrill::platform::sqlite
