#pragma once

#include "platform/database.h"

#include <string>
#include <string_view>
#include <vector>

namespace cuedrill::store {

/// The most characters (code points) of a question, an answer, or a text parameter.
inline constexpr int longest_text = 200;

/// The table of the parameters, as it stands in the file: the texts of these statements are part of it.
inline constexpr std::string_view params_ddl =
    R"(CREATE TABLE "params" ()"
    R"("param" TEXT COLLATE CUEDRILL CHECK (length("param") <= 20), )"
    R"("date_value" REAL, )"
    R"("string_value" TEXT COLLATE CUEDRILL CHECK (length("string_value") <= 200), )"
    R"("number_value" REAL, )"
    R"(CONSTRAINT "params_PrimaryKey" PRIMARY KEY ("param")) STRICT)";

/// The table of the questions and answers, with its indexes. Questions may repeat, as answers may: a row is known by
/// its number alone, which the engine gives and never gives again.
inline constexpr std::string_view qa_ddl = R"(CREATE TABLE "qa" ()"
                                           R"("cnt" INTEGER PRIMARY KEY AUTOINCREMENT, )"
                                           R"("q" TEXT COLLATE CUEDRILL CHECK (length("q") <= 200), )"
                                           R"("a" TEXT COLLATE CUEDRILL CHECK (length("a") <= 200), )"
                                           R"("q_attempts" INTEGER CHECK ("q_attempts" BETWEEN -32768 AND 32767), )"
                                           R"("a_attempts" INTEGER CHECK ("a_attempts" BETWEEN -32768 AND 32767), )"
                                           R"("q_fails" INTEGER CHECK ("q_fails" BETWEEN -32768 AND 32767), )"
                                           R"("a_fails" INTEGER CHECK ("a_fails" BETWEEN -32768 AND 32767), )"
                                           R"("q_successes" INTEGER CHECK ("q_successes" BETWEEN -32768 AND 32767), )"
                                           R"("a_successes" INTEGER CHECK ("a_successes" BETWEEN -32768 AND 32767), )"
                                           R"("q_date_last_test" REAL, )"
                                           R"("a_date_last_test" REAL, )"
                                           R"("q_date_last_show" REAL, )"
                                           R"("a_date_last_show" REAL) STRICT; )"
                                           R"(CREATE INDEX "qa_q" ON "qa" ("q"); )"
                                           R"(CREATE INDEX "qa_a" ON "qa" ("a"))";

/// @throws platform::DatabaseError (constraint) when a text of `column` has more characters than `longest_text`.
void check_length(std::string_view column, std::string_view text);

/// The tables that every course holds: `params` and `qa`.
const std::vector<platform::TableDefinition>& course_tables();

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
