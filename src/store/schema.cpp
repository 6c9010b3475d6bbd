#include "store/schema.h"

#include "common/text.h"

#include <cstddef>

namespace cuedrill::store {
namespace {

// Existing courses hold these statements word for word, and opening a course compares them literally: do not change
// even a blank. STRICT enforces the types of columns. The collation CUEDRILL ignores case. AUTOINCREMENT never assigns
// a number twice.
const platform::TableSchema& params_table()
{
    static const platform::TableSchema table{
        .name = "params",
        .table = R"(CREATE TABLE "params" ()"
                 R"("param" TEXT COLLATE CUEDRILL CHECK (length("param") <= 20), )"
                 R"("date_value" REAL, )"
                 R"("string_value" TEXT COLLATE CUEDRILL CHECK (length("string_value") <= 200), )"
                 R"("number_value" REAL, )"
                 R"(CONSTRAINT "params_PrimaryKey" PRIMARY KEY ("param")) STRICT)",
        .indexes = {}};
    return table;
}

// Questions and answers may occur more than once; only the number identifies a row.
const platform::TableSchema& qa_table()
{
    static const platform::TableSchema table{
        .name = "qa",
        .table = R"(CREATE TABLE "qa" ()"
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
                 R"("a_date_last_show" REAL) STRICT)",
        // All indexes of a file share one namespace, so each name begins with that of the table.
        .indexes = {R"(CREATE INDEX "qa_q" ON "qa" ("q"))", R"(CREATE INDEX "qa_a" ON "qa" ("a"))"},
        // One index per direction, from which the next question and the counts are read without the table. Its entries
        // are in the order in which questions are asked, level by level, and hold the date of the last show, which can
        // delay a question.
        .aids = {{.name = "qa_q_due",
                  .statement = R"(CREATE INDEX "qa_q_due" ON "qa" ()"
                               R"("q_successes", "q_date_last_test", "cnt", "q_date_last_show"))"},
                 {.name = "qa_a_due",
                  .statement = R"(CREATE INDEX "qa_a_due" ON "qa" ()"
                               R"("a_successes", "a_date_last_test", "cnt", "a_date_last_show"))"}}};
    return table;
}

} // namespace

const std::vector<platform::TableSchema>& course_tables()
{
    static const std::vector<platform::TableSchema> tables{params_table(), qa_table()};
    return tables;
}

void check_length(std::string_view column, std::string_view text)
{
    // A text never has more characters than bytes, so short ones need not be counted.
    const std::size_t length = text.size() > std::size_t{longest_text} ? common::code_points(text) : 0;
    if (length > std::size_t{longest_text})
        throw platform::DatabaseError(platform::DatabaseErrorKind::constraint, 0,
                                      "The text in column " + std::string(column) + " has " + std::to_string(length) +
                                          " characters; " + std::to_string(longest_text) + " fit.");
}

void create_params_table(platform::Database& database)
{
    database.append_table(params_table());
}

void create_qa_table(platform::Database& database)
{
    database.append_table(qa_table());
}

void create_course_db(platform::Database& database, const std::string& path)
{
    database.create(path);
    try {
        create_params_table(database);
        create_qa_table(database);
        database.finish_creation();
    } catch (...) {
        database.close();
        throw;
    }
}

} // namespace cuedrill::store
