#pragma once

#include "fuzz/fuzzing.h"
#include "platform/icu/icu_text_compare.h"
#include "platform/sqlite/engine_functions.h"

#include <initializer_list>
#include <optional>
#include <sqlite3.h>
#include <string_view>

namespace cuedrill::fuzz {

/// The engine without a file, with the program's functions, and one statement that gives a number.
class MemoryEngine {
public:
    explicit MemoryEngine(const char* sql)
    {
        require(sqlite3_open(":memory:", &db_) == SQLITE_OK, "the engine opens no file");
        platform::sqlite::register_functions(db_, rules_);
        require(sqlite3_prepare_v2(db_, sql, -1, &statement_, nullptr) == SQLITE_OK, "the statement is prepared");
    }
    MemoryEngine(const MemoryEngine&) = delete;
    MemoryEngine& operator=(const MemoryEngine&) = delete;
    ~MemoryEngine()
    {
        sqlite3_finalize(statement_);
        sqlite3_close(db_);
    }

    [[nodiscard]] const platform::TextCompare& compare() const { return compare_; }

    /// The number for these texts; std::nullopt where a function refuses one of them.
    [[nodiscard]] std::optional<double> number_for(std::initializer_list<std::string_view> texts)
    {
        int place = 0;
        for (const std::string_view text : texts)
            sqlite3_bind_text(statement_, ++place, text.empty() ? "" : text.data(), static_cast<int>(text.size()),
                              SQLITE_STATIC);
        std::optional<double> number;
        if (sqlite3_step(statement_) == SQLITE_ROW)
            number = sqlite3_column_double(statement_, 0);
        sqlite3_reset(statement_);
        sqlite3_clear_bindings(statement_);
        rules_.failure = nullptr;
        return number;
    }

private:
    platform::icu::IcuTextCompare compare_;
    platform::sqlite::TextRules rules_{compare_};
    sqlite3* db_ = nullptr;
    sqlite3_stmt* statement_ = nullptr;
};

} // namespace cuedrill::fuzz
