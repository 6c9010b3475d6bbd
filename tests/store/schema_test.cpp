#include "fakes/course_builder.h"
#include "fakes/recording_database.h"
#include "fakes/temp_folder.h"
#include "store/schema.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <utility>

namespace cuedrill::store {
namespace {

// Existing courses hold these statements word for word.
constexpr const char* params_ddl = R"(CREATE TABLE "params" ()"
                                   R"("param" TEXT COLLATE CUEDRILL CHECK (length("param") <= 20), )"
                                   R"("date_value" REAL, )"
                                   R"("string_value" TEXT COLLATE CUEDRILL CHECK (length("string_value") <= 200), )"
                                   R"("number_value" REAL, )"
                                   R"(CONSTRAINT "params_PrimaryKey" PRIMARY KEY ("param")) STRICT)";

constexpr const char* qa_ddl = R"(CREATE TABLE "qa" ()"
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

constexpr const char* aids_ddl =
    R"(CREATE INDEX "qa_q_due" ON "qa" ("q_successes", "q_date_last_test", "cnt", "q_date_last_show"); )"
    R"(CREATE INDEX "qa_a_due" ON "qa" ("a_successes", "a_date_last_test", "cnt", "a_date_last_show"))";

using fakes::Operation;
using platform::DatabaseError;
using platform::DatabaseErrorKind;

class Schema : public testing::Test {
protected:
    fakes::TempFolder folder;
    std::string path = folder.file("new.crs");
    fakes::RealEngine engine;
    fakes::RecordingDatabase database{engine.database};

    std::int64_t add_row(const std::string& q)
    {
        database.execute("Insert into qa (q) values (?1)", {q});
        return std::get<std::int64_t>(database.query("Select last_insert_rowid()")[0].field(0));
    }
};

TEST_F(Schema, a_new_course_is_left_open_with_both_tables_empty)
{
    create_course_db(database, path);
    EXPECT_TRUE(database.is_open());
    EXPECT_EQ(fakes::contents_of(database), fakes::CourseContents{});
    database.close();
    EXPECT_EQ(fakes::read_course(path), fakes::CourseContents{});
}

TEST_F(Schema, the_texts_of_its_statements_are_what_the_file_holds)
{
    create_course_db(database, path);
    std::string texts;
    for (const platform::Row row :
         engine.database.query("Select sql from sqlite_schema where name not like 'sqlite_*' order by rowid"))
        texts += std::get<std::string>(row.field(0)) + "; ";
    EXPECT_EQ(texts, std::string(params_ddl) + "; " + qa_ddl + "; " + aids_ddl + "; ");
}

TEST_F(Schema, the_same_question_is_stored_twice)
{
    create_course_db(database, path);
    add_row("Rome");
    add_row("Rome");
    const auto rows = fakes::contents_of(database).qa;
    ASSERT_EQ(rows.size(), 2U);
    EXPECT_EQ(rows[0].q, rows[1].q);
    EXPECT_NE(rows[0].cnt, rows[1].cnt);
}

TEST_F(Schema, the_number_of_a_deleted_record_never_comes_back)
{
    create_course_db(database, path);
    add_row("a");
    const std::int64_t deleted = add_row("b");
    database.execute("Delete from qa where cnt=?1", {deleted});
    EXPECT_EQ(add_row("c"), deleted + 1);
}

TEST_F(Schema, a_parameter_is_found_whatever_the_case_of_its_name)
{
    create_course_db(database, path);
    database.execute("Insert into params (param) values ('course_title')");
    const platform::Rows found = database.query("Select param from params where param=?1", {"COURSE_TITLE"});
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found[0].field("PARAM"), platform::Value("course_title"));
}

TEST_F(Schema, all_of_the_history_of_a_new_record_is_null)
{
    create_course_db(database, path);
    add_row("new");
    EXPECT_EQ(fakes::contents_of(database).qa.at(0), (fakes::QaRow{.cnt = 1, .q = "new"}));
}

TEST_F(Schema, texts_of_200_characters_fit_and_of_201_are_refused)
{
    create_course_db(database, path);
    std::string text;
    for (int i = 0; i < longest_text; ++i)
        text += "é";
    add_row(text);
    EXPECT_EQ(fakes::contents_of(database).qa.at(0).q, text);
    try {
        add_row(text + "x");
        ADD_FAILURE() << "A text that is too long was stored.";
    } catch (const DatabaseError& error) {
        EXPECT_EQ(error.kind(), DatabaseErrorKind::constraint);
    }
}

TEST_F(Schema, counters_take_16_bits)
{
    create_course_db(database, path);
    add_row("x");
    database.execute("Update qa set q_attempts=?1", {std::int64_t{32767}});
    EXPECT_THROW(database.execute("Update qa set q_attempts=?1", {std::int64_t{32768}}), DatabaseError);
}

TEST_F(Schema, an_existing_file_is_never_replaced)
{
    folder.write("new.crs", "precious");
    try {
        create_course_db(database, path);
        ADD_FAILURE() << "An existing file was replaced.";
    } catch (const DatabaseError& error) {
        EXPECT_EQ(error.kind(), DatabaseErrorKind::exists);
    }
    EXPECT_EQ(folder.read("new.crs"), "precious");
}

/// Proves that a creation that fails at any step leaves neither a file nor an open database behind.
class FailingCreation : public Schema, public testing::WithParamInterface<std::pair<Operation, int>> {};

TEST_P(FailingCreation, leaves_nothing_behind)
{
    database.fail_at(GetParam().first, GetParam().second);
    EXPECT_THROW(create_course_db(database, path), DatabaseError);
    EXPECT_FALSE(database.is_open());
    EXPECT_TRUE(std::filesystem::is_empty(folder.path()));
    create_course_db(database, path);
    EXPECT_TRUE(database.is_open());
}

INSTANTIATE_TEST_SUITE_P(AtEveryStep, FailingCreation,
                         testing::Values(std::pair(Operation::create, 1), std::pair(Operation::append_table, 1),
                                         std::pair(Operation::append_table, 2),
                                         std::pair(Operation::finish_creation, 1)));

} // namespace
} // namespace cuedrill::store
