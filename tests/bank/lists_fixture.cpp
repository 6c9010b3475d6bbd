#include "lists_fixture.h"

namespace cuedrill::bank {

ListsOfACourse::ListsOfACourse() = default;
ListsOfACourse::~ListsOfACourse() = default;

ListsOfACourse::NewRecord ListsOfACourse::add(const std::string& question, const std::string& answer)
{
    fakes::QuestionBuilder q_side = inverted ? builder.question(answer, question) : builder.question(question, answer);
    fakes::QuestionBuilder a_side = q_side;
    a_side.inverted();
    return inverted ? NewRecord{a_side, q_side} : NewRecord{q_side, a_side};
}

void ListsOfACourse::open_course()
{
    course.db_path = builder.write(folder);
    course.apri_db();
    course.params.invert = inverted;
    course.set_side_fields();
    database.forget();
}

void ListsOfACourse::open_course_with_items(int count)
{
    open_course();
    database.execute("Insert into qa (q, a) with recursive numbers (n) as (select 1 union all select n + 1 from "
                     "numbers where n < " +
                     std::to_string(count) + ") select 'item ' || n, 'item ' || n from numbers");
    database.forget();
}

void ListsOfACourse::open_course_with_long_texts(int records, int letters, int answer_letters)
{
    open_course();
    drop_checks();
    // Without the indexes the insert is fast: keeping long texts sorted is what takes the time.
    database.execute("Drop index qa_q");
    database.execute("Drop index qa_a");
    database.execute("Insert into qa (q, a) with recursive numbers (n) as (select 1 union all select n + 1 from "
                     "numbers where n < " +
                     std::to_string(records) + ") select n || ' item ' || " + text_of(letters) + ", " +
                     text_of(answer_letters) + " from numbers");
    database.forget();
}

std::string ListsOfACourse::text_of(int letters)
{
    return "replace(hex(zeroblob(" + std::to_string(letters / 2) + ")), '0', 'x')";
}

void ListsOfACourse::drop_checks()
{
    database.execute("PRAGMA ignore_check_constraints = ON");
}

std::string ListsOfACourse::refusal_of(const std::string& sql)
{
    try {
        static_cast<void>(engine.database.open_recordset(sql));
    } catch (const platform::DatabaseError& error) {
        return error.what();
    }
    ADD_FAILURE() << "Not refused: " << sql;
    return {};
}

std::string ListsOfACourse::unreadable() const
{
    return "The course " + course.db_path + " could not be read or written.\r\n\r\nThe disk is full.";
}

std::string direction_name(const testing::TestParamInfo<bool>& is_inverted)
{
    return is_inverted.param ? "inverted" : "straight";
}

} // namespace cuedrill::bank
