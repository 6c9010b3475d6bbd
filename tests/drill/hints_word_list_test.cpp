#include "app/start/start.h"
#include "drill/answer_aids.h"
#include "drill/drill_state.h"
#include "drill/hints_fixture.h"
#include "store/course.h"
#include "store/schema.h"

#include <algorithm>

namespace cuedrill::drill {
namespace {

class WordList : public HintsFixture {};

TEST_F(WordList, holds_the_words_of_the_answer_and_of_others_in_brackets)
{
    start_with_three_questions();
    yes();
    show_hint({0.0, 0.4});
    EXPECT_EQ(hint(), " [Paris]   [Rome]  ");
    EXPECT_TRUE(form1.panel_lista.is_visible);
    EXPECT_TRUE(form1.t_hint.is_visible);
    EXPECT_FALSE(form1.frame_stats.is_visible);
    EXPECT_TRUE(logic->state.AnswerShown);
    EXPECT_EQ(form1.t_hint.accessible_name, "Hint");
}

TEST_F(WordList, leaves_the_question_and_the_typed_text_alone)
{
    start_with_three_questions();
    yes();
    type_answer("Pa");
    show_hint();
    EXPECT_EQ(question(), "France?");
    EXPECT_EQ(answer(), "Pa");
    EXPECT_FALSE(form1.Text_a.locked);
    EXPECT_EQ(stored(1).q_side.attempts, 4);
}

TEST_F(WordList, is_shown_by_the_menu_too)
{
    start_with_three_questions();
    yes();
    choose("m_view_hints");
    EXPECT_EQ(words(), Words{"Paris"});
    choose("m_view_stats");
    EXPECT_FALSE(form1.panel_lista.is_visible);
}

TEST_F(WordList, needs_a_question_whose_answer_is_not_on_display)
{
    start_with_three_questions();
    user([this] { logic->aids.m_view_hints(); });
    EXPECT_FALSE(form1.panel_lista.is_visible);
    yes();
    yes();
    user([this] { logic->aids.m_view_hints(); });
    EXPECT_FALSE(form1.panel_lista.is_visible);
    EXPECT_FALSE(logic->state.AnswerShown);
}

TEST_F(WordList, splits_answers_at_blanks_and_punctuation)
{
    start_with_answers("one two;three,four.five?six", {"; , .", "x"});
    show_hint({0.0, 0.5});
    EXPECT_EQ(words(), (Words{"five", "four", "one", "six", "three", "two"}));
}

TEST_F(WordList, keeps_other_signs_in_the_words)
{
    start_with_answers("It's (half-)done: stop!", {"x", "y"});
    show_hint({0.0, 0.0});
    EXPECT_EQ(words(), (Words{"(half-)done:", "It's", "stop!"}));
}

TEST_F(WordList, is_in_alphabetical_order)
{
    start_with_answers("zoo Éclair apple eclipse ähnlich Zebra 8", {"x", "y"});
    show_hint({0.0, 0.0});
    EXPECT_EQ(words(), (Words{"8", "ähnlich", "apple", "Éclair", "eclipse", "Zebra", "zoo"}));
}

TEST_F(WordList, has_no_word_twice_and_keeps_the_spelling_that_came_first)
{
    start_with_answers("Rome rome", {"ROME ÄRGER", "ärger"});
    show_hint({0.0, 0.5});
    EXPECT_EQ(words(), (Words{"ÄRGER", "Rome"}));
    toolbar(3);
    show_hint({0.9, 0.5});
    EXPECT_EQ(words(), (Words{"ÄRGER", "ROME"}));
}

TEST_F(WordList, tells_the_hint_box_the_places_of_its_words)
{
    start_with_answers("Zürich Bern", {"x", "y"});
    show_hint({0.0, 0.0});
    ASSERT_EQ(hint(), " [Bern]   [Zürich]  ");
    EXPECT_EQ(form1.t_hint.words, (std::vector<common::TextRange>{{2, 6}, {11, 17}}));
}

TEST_F(WordList, of_an_inverted_course_takes_the_other_side)
{
    builder.number_param("invert", 1);
    for (const auto& [q, a] : {std::pair("France?", "Paris"), std::pair("Italy?", "Rome"), std::pair("Spain", "M")})
        builder.question(q, a).inverted().level(0).attempts(0).fails(0).tested_ago(1h);
    start();
    yes();
    ASSERT_EQ(question(), "Paris");
    show_hint({0.0, 0.9});
    EXPECT_EQ(words(), (Words{"France", "Spain"}));
}

TEST_F(WordList, does_not_show_the_line_end_behind_an_answer)
{
    start_with_answers("Paris\r\n", {"Rome\r\n", "Oslo\r\n"});
    show_hint({0.0, 0.5});
    EXPECT_EQ(words(), (Words{"Paris", "Rome"}));
    toolbar(3);
    show_hint({0.0, 0.0});
    EXPECT_EQ(words(), Words{"Paris"}) << "the answer was drawn again";
}

TEST_F(WordList, skips_records_that_another_program_has_deleted)
{
    start_with_answers("a1", {"a2", "a3", "a4"});
    database.execute("Delete from qa where cnt = 2");
    show_hint({0.0, 0.3, 0.6});
    EXPECT_EQ(words(), (Words{"a1", "a3"}));
    toolbar(3);
    database.execute("Delete from qa");
    show_hint({0.0, 0.3, 0.6});
    EXPECT_EQ(words(), Words{"a1"});
}

TEST_F(WordList, that_cannot_be_read_leaves_what_was_there)
{
    start_with_three_questions();
    yes();
    database.fail_at(fakes::Operation::open_recordset);
    desktop.expect_box("The course " + path + " could not be read or written.\r\n\r\nThe disk is full.");
    show_hint();
    EXPECT_TRUE(form1.frame_stats.is_visible);
    EXPECT_FALSE(form1.panel_lista.is_visible);
    EXPECT_FALSE(logic->state.AnswerShown);
    EXPECT_EQ(question(), "France?");
    EXPECT_EQ(database.open_recordsets(), 0);
    show_hint({0.0, 0.4});
    EXPECT_EQ(words(), (Words{"Paris", "Rome"}));
}

TEST_F(WordList, goes_with_the_question)
{
    start_with_three_questions();
    yes();
    show_hint();
    no();
    EXPECT_FALSE(form1.panel_lista.is_visible);
    EXPECT_TRUE(form1.frame_stats.is_visible);
    EXPECT_FALSE(logic->state.AnswerShown);
}

TEST_F(WordList, is_put_away_by_escape_and_the_answer_counts_as_shown)
{
    start_with_three_questions();
    yes();
    show_hint();
    go_to_word("Paris");
    press_in_hint({.key = platform::Key::escape});
    EXPECT_FALSE(form1.panel_lista.is_visible);
    EXPECT_FALSE(form1.t_hint.has_focus());
    EXPECT_TRUE(logic->state.AnswerShown);
    EXPECT_FALSE(ended);
}

struct Course {
    int records;
    int sample;
};

/// The answers are "a1", "a2" ...
class SampleOf : public HintsFixture, public testing::WithParamInterface<Course> {
protected:
    void SetUp() override
    {
        for (int number = 1; number <= GetParam().records; ++number)
            builder.question("q" + std::to_string(number), "a" + std::to_string(number))
                .level(0)
                .attempts(0)
                .fails(0)
                .tested_ago(1h);
        start();
        yes();
    }

    /// Random numbers that draw every record except the current one, in order.
    [[nodiscard]] std::deque<double> others() const
    {
        std::deque<double> numbers;
        for (int number = 1; number <= GetParam().records; ++number) {
            if (number != logic->state.shown.current_cnt())
                numbers.push_back((number - 0.5) / GetParam().records);
        }
        return numbers;
    }
};

TEST_P(SampleOf, answers_is_as_large_as_the_course_allows)
{
    std::deque<double> numbers = others();
    numbers.push_front(0); // the position of the answer
    show_hint(std::move(numbers));
    EXPECT_EQ(words().size(), static_cast<std::size_t>(GetParam().sample));
    EXPECT_EQ(random.calls, GetParam().sample);
    EXPECT_TRUE(form1.panel_lista.is_visible);
    if (GetParam().sample > 0) {
        const Words listed = words();
        EXPECT_EQ(std::count(listed.begin(), listed.end(), logic->state.shown.loaded_answer()), 1);
    }
}

TEST_P(SampleOf, answers_has_the_right_one_at_any_place)
{
    for (int place = 0; place < GetParam().sample; ++place) {
        toolbar(3);
        show_hint({(place + 0.5) / GetParam().sample});
        const Words listed = words();
        EXPECT_EQ(std::count(listed.begin(), listed.end(), logic->state.shown.loaded_answer()), 1) << place;
        EXPECT_EQ(random.calls, GetParam().sample) << place;
    }
}

INSTANTIATE_TEST_SUITE_P(Sizes, SampleOf,
                         testing::Values(Course{1, 0}, Course{2, 1}, Course{3, 2}, Course{14, 13}, Course{15, 15},
                                         Course{16, 15}),
                         [](const auto& course) { return std::to_string(course.param.records) + "_records"; });

TEST_F(WordList, draws_each_record_alike_whatever_gaps_are_between_their_numbers)
{
    const int numbers[] = {2, 5, 9, 100, 32000};
    for (const int number : numbers)
        builder.question("q" + std::to_string(number), "a" + std::to_string(number))
            .number(number)
            .level(0)
            .attempts(0)
            .fails(0)
            .tested_ago(1h);
    start();
    yes();
    const std::string own = logic->state.shown.loaded_answer();
    for (int position = 0; position < 5; ++position) {
        const std::string drawn = "a" + std::to_string(numbers[position]);
        toolbar(3);
        show_hint({0.0, (position + 0.001) / 5, (position + 0.5) / 5, (position + 0.999) / 5});
        Words expected{own};
        if (drawn != own)
            expected.push_back(drawn);
        std::sort(expected.begin(), expected.end());
        Words listed = words();
        std::sort(listed.begin(), listed.end());
        EXPECT_EQ(listed, expected);
        EXPECT_EQ(random.calls, 4);
        EXPECT_EQ(database.count(fakes::Operation::query), 1 + 3); // the record numbers, and three records
    }
}

TEST_F(WordList, asks_a_course_of_30000_records_for_no_more_than_it_shows)
{
    builder.question("France?", "Paris").number(1).level(0).attempts(0).fails(0).tested_ago(1h);
    path = builder.write(folder);
    {
        fakes::RealEngine writer;
        writer.database.open(path, store::course_tables());
        writer.database.execute("Insert into qa (q, a) with recursive n(i) as (select 2 union all select i + 1 from n "
                                "where i < 30000) select 'q' || i, 'a' || i from n");
    }
    make_program();
    user([this] { started = logic->start.run(path); });
    ASSERT_TRUE(started);
    yes();
    ASSERT_EQ(question(), "France?");
    random.constant = 0.9999999;
    show_hint({0.0, 0.5});
    EXPECT_EQ(words(), (Words{"a15001", "a30000", "Paris"}));
    EXPECT_EQ(random.calls, 15);
    EXPECT_EQ(database.count(fakes::Operation::query), 14);
    EXPECT_EQ(database.statements().size(), 2U + 14U) << "the lowest and the highest number, and the records";
    EXPECT_EQ(database.statements()[0], "Select min(cnt) as conto from qa");
    EXPECT_EQ(database.statements()[1], "Select max(cnt) as conto from qa");
}

class MaskedHint : public HintsFixture {
protected:
    void show_masked(const std::string& first)
    {
        start_with_answers(first, {"x"});
        toolbar(5);
        toolbar(4);
    }
};

TEST_F(MaskedHint, hides_letters_and_digits_of_ascii_and_nothing_else)
{
    show_masked("az AZ 09, @[`{/: Zürich (CH)!");
    EXPECT_EQ(hint(), "\x01\x01 \x01\x01 \x01\x01, @[`{/: \x01ü\x01\x01\x01\x01 (\x01\x01)!");
    EXPECT_TRUE(logic->state.AnswerShown);
    EXPECT_TRUE(form1.panel_lista.is_visible);
    EXPECT_TRUE(form1.t_hint.is_visible);
    EXPECT_EQ(random.calls, 0);
}

TEST_F(MaskedHint, keeps_the_caret_and_the_text_in_the_answer_box)
{
    start_with_answers("Paris", {"Rome"});
    toolbar(5);
    type_answer("Pa");
    choose("m_view_hints");
    EXPECT_EQ(hint(), "\x01\x01\x01\x01\x01");
    EXPECT_TRUE(form1.Text_a.has_focus());
    EXPECT_TRUE(logic->state.TypingMode);
    type_answer("ri");
    EXPECT_EQ(answer(), "Pari");
    toolbar(3);
    toolbar(4);
    EXPECT_TRUE(form1.Text_a.has_focus());
}

TEST_F(MaskedHint, has_no_words_to_choose)
{
    show_masked("[Paris]");
    EXPECT_EQ(form1.t_hint.words.size(), 0U);
    for (std::size_t place = 0; place < 7; ++place)
        click_hint(place);
    form1.t_hint.caret_value = 2;
    press_in_hint({.key = platform::Key::enter});
    EXPECT_EQ(answer(), "");
    EXPECT_EQ(question(), "first");
    EXPECT_EQ(desktop.beeps, 0);
    EXPECT_EQ(stored(1).q_side.attempts, 4);
}

TEST_F(MaskedHint, takes_the_words_of_the_list_before_it_away)
{
    start_with_answers("Paris", {"Rome"});
    show_hint();
    const std::size_t place = word_place("Paris");
    toolbar(3);
    toolbar(5);
    toolbar(4);
    click_hint(place);
    EXPECT_EQ(question(), "first");
    EXPECT_EQ(answer(), "");
}

TEST_F(MaskedHint, costs_the_success)
{
    show_masked("Paris");
    type_answer("Paris");
    desktop.expect_box("Your answer is: \r\n\r\n   Paris\r\n\r\nThe correct answer is: \r\n\r\n   Paris");
    enter_in_answer();
    EXPECT_EQ(stored(1).q_side.fails, 2);
}

} // namespace
} // namespace cuedrill::drill
