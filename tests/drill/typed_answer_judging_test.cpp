#include "common/colour.h"
#include "drill/drill_fixture.h"
#include "drill/drill_state.h"
#include "drill/status_line.h"
#include "drill/typed_answer.h"
#include "store/course.h"

#include <vector>

namespace cuedrill::drill {
namespace {

using Marks = std::vector<common::TextRange>;

std::string wrong_answer_text(const std::string& typed, const std::string& correct)
{
    return "Your answer is: \r\n\r\n   " + typed + "\r\n\r\nThe correct answer is: \r\n\r\n   " + correct;
}

/// The question "France?" is on display.
class JudgedAnswer : public DrillFixture {
protected:
    void SetUp() override
    {
        start_with_three_questions();
        yes();
    }

    void enter(std::string_view typed)
    {
        type_answer(typed);
        enter_in_answer();
    }

    void expect_known() const
    {
        EXPECT_EQ(stored(1).q_side, (fakes::SideRow{5, 1, 4, clock.time, clock.time}));
        EXPECT_EQ(question(), "Italy?");
        EXPECT_EQ(answer(), "");
    }
    void expect_not_known() const
    {
        EXPECT_EQ(stored(1).q_side, (fakes::SideRow{5, 2, 0, clock.time, clock.time}));
        EXPECT_EQ(question(), "Italy?");
        EXPECT_EQ(answer(), "");
    }
};

TEST_F(JudgedAnswer, that_is_right_is_a_success)
{
    enter("Paris");
    expect_known();
    EXPECT_EQ(status(), "score of previous question increased from 2 to 4 (elapsed 1.00 days)");
    EXPECT_FALSE(form1.screen.P_status.bold);
    EXPECT_EQ(logic->state.dialog, DialogState::OfferAnswer);
}

TEST_F(JudgedAnswer, that_is_right_is_greeted_before_it_is_stored)
{
    std::vector<std::string> seen;
    desktop.on_pump = [&] {
        seen.push_back(status());
        EXPECT_EQ(form1.screen.P_status.background, common::pure_green);
        EXPECT_TRUE(form1.screen.P_status.bold);
        EXPECT_EQ(stored(1).q_side.attempts, 4);
    };
    enter("Paris");
    desktop.on_pump = nullptr;
    EXPECT_EQ(seen, std::vector<std::string>{"OK"});
    expect_known();
}

TEST_F(JudgedAnswer, that_is_right_is_told_as_such_once_then_its_score_then_the_next_question)
{
    form1.window.announcements.clear();
    form1.journal.clear();
    enter("Paris");
    EXPECT_EQ(form1.window.announcements, (std::vector<std::string>{"Right.", "Italy?"}));
    const std::ptrdiff_t score =
        place_of("P_status.caption=score of previous question increased from 2 to 4 (elapsed 1.00 days)");
    EXPECT_LT(place_of("Form1.announce=Right."), score);
    EXPECT_LT(score, place_of("Form1.announce=Italy?"));
    EXPECT_EQ(times_noted("P_status.untold caption=OK"), 1);
    EXPECT_EQ(times_noted("P_status.caption=OK"), 0);
}

TEST_F(JudgedAnswer, that_is_wrong_is_not_told_as_right)
{
    desktop.expect_box(wrong_answer_text("Rome", "Paris"));
    form1.window.announcements.clear();
    enter("Rome");
    EXPECT_EQ(form1.window.announcements, std::vector<std::string>{"Not known. Level 0. Italy?"});
}

TEST_F(JudgedAnswer, is_judged_the_same_while_typing)
{
    toolbar(5);
    enter("Paris");
    expect_known();
}

TEST_F(JudgedAnswer, that_is_wrong_is_a_failure_and_told_in_a_box)
{
    desktop.expect_box_like(
        {.text = wrong_answer_text("Pariss", "Paris"), .icon = platform::BoxIcon::information, .title = "Wrong answer"},
        platform::BoxAnswer::ok);
    enter("Pariss");
    expect_not_known();
}

TEST_F(JudgedAnswer, that_is_wrong_makes_the_line_red_while_the_box_tells_it)
{
    desktop.expect_box(wrong_answer_text("Rome", "Paris"));
    logic->status.ShowStatus("something else", 0);
    desktop.on_box = [this] {
        EXPECT_EQ(status(), "");
        EXPECT_EQ(form1.screen.P_status.background, common::pure_red);
        EXPECT_EQ(stored(1).q_side.attempts, 4) << "the verdict comes after the box";
        EXPECT_EQ(database.transaction_depth(), 0);
    };
    enter("Rome");
    desktop.on_box = nullptr;
    EXPECT_EQ(status(), "");
    EXPECT_EQ(form1.screen.P_status.background, std::nullopt);
    expect_not_known();
}

TEST_F(JudgedAnswer, is_shown_as_it_was_typed_with_what_differs_marked)
{
    const std::string text = wrong_answer_text(" Poris x", "Paris");
    desktop.expect_box(text);
    enter(" Poris x");
    // In the message both texts follow a heading and three blanks.
    const std::size_t typed = std::string("Your answer is: \r\n\r\n   ").size();
    const std::size_t correct = text.size() - std::string("Paris").size();
    ASSERT_FALSE(desktop.boxes.empty());
    EXPECT_EQ(desktop.boxes.back().marked,
              (Marks{{typed, typed + 1}, {typed + 2, typed + 3}, {typed + 6, typed + 8}, {correct + 1, correct + 2}}));
}

TEST_F(JudgedAnswer, is_not_told_where_there_is_none)
{
    desktop.expect_box("The correct answer is: \r\n\r\n   Paris");
    user([this] { logic->typed_answer.JudgeTypedAnswer(); });
    ASSERT_FALSE(desktop.boxes.empty());
    EXPECT_EQ(desktop.boxes.back().marked, Marks());
    expect_not_known();
}

TEST_F(JudgedAnswer, that_shares_less_than_half_with_the_right_one_has_nothing_marked)
{
    desktop.expect_box(wrong_answer_text("Oslo is", "Paris"));
    enter("Oslo is");
    ASSERT_FALSE(desktop.boxes.empty());
    EXPECT_EQ(desktop.boxes.back().marked, Marks());
}

TEST_F(JudgedAnswer, after_a_hint_is_a_failure_though_it_is_right)
{
    toolbar(4);
    desktop.expect_box(wrong_answer_text("Paris", "Paris"));
    enter("Paris");
    ASSERT_FALSE(desktop.boxes.empty());
    EXPECT_EQ(desktop.boxes.back().marked, Marks{});
    expect_not_known();
}

TEST_F(JudgedAnswer, after_a_hint_that_was_put_away_is_a_failure_too)
{
    toolbar(4);
    toolbar(3);
    desktop.expect_box(wrong_answer_text("Paris", "Paris"));
    enter("Paris");
    expect_not_known();
}

TEST_F(JudgedAnswer, is_free_of_the_hint_of_the_question_before)
{
    toolbar(4);
    toolbar(1);
    enter("rome");
    EXPECT_EQ(stored(2).q_side.successes, 3);
    EXPECT_EQ(question(), "Spain?");
}

TEST_F(JudgedAnswer, is_not_scored_when_the_program_ends_in_the_box)
{
    desktop.on_box = [] { throw common::ProgramEnded{}; };
    enter("Rome");
    ASSERT_FALSE(desktop.boxes.empty());
    EXPECT_EQ(desktop.boxes.back().text, wrong_answer_text("Rome", "Paris"));
    EXPECT_TRUE(ended);
    EXPECT_EQ(stored(1).q_side.attempts, 4);
}

struct Spelling {
    const char* name;
    const char* stored;
    const char* typed;
    bool right;
};

class Spellings : public DrillFixture, public testing::WithParamInterface<Spelling> {};

TEST_P(Spellings, are_right_when_only_case_blanks_and_the_form_of_accents_differ)
{
    builder.question("Word?", GetParam().stored).level(2).attempts(0).fails(0).tested_ago(24h);
    builder.question("Next?", "next").level(0).tested_ago(1h);
    start();
    yes();
    type_answer(GetParam().typed);
    if (!GetParam().right)
        desktop.expect_box(wrong_answer_text(GetParam().typed, GetParam().stored));
    enter_in_answer();
    EXPECT_EQ(stored(1).q_side.attempts, 1);
    EXPECT_EQ(stored(1).q_side.fails, GetParam().right ? 0 : 1);
    EXPECT_EQ(question(), "Next?");
}

INSTANTIATE_TEST_SUITE_P(
    Pairs, Spellings,
    testing::Values(Spelling{"case", "Paris", "pARIS", true}, Spelling{"case_beyond_ascii", "Ärger", "äRGER", true},
                    Spelling{"blanks_around", "Paris", "  Paris ", true},
                    Spelling{"blanks_around_the_stored_one", " Paris  ", "Paris", true},
                    Spelling{"decomposed_accent", "Café", "Cafe\u0301", true},
                    Spelling{"decomposed_stored_accent", "Cafe\u0301", "Café", true},
                    Spelling{"decomposed_accent_in_other_case", "CAFÉ", "cafe\u0301", true},
                    Spelling{"signs", "C++", "c++", true}, Spelling{"missing_accent", "Café", "Cafe", false},
                    Spelling{"other_accent", "Café", "Cafè", false}, Spelling{"blank_inside", "Paris", "Pa ris", false},
                    Spelling{"two_blanks_for_one", "New York", "New  York", false},
                    Spelling{"tab_behind", "Paris", "Paris\t", false}, Spelling{"beginning", "Paris", "Pari", false},
                    Spelling{"too_much", "Paris", "Paris!", false}, Spelling{"sharp_s", "Straße", "Strasse", false}),
    [](const auto& one) { return std::string(one.param.name); });

class DecomposedAnswer : public DrillFixture {};

TEST_F(DecomposedAnswer, has_nothing_marked_where_only_its_form_differs)
{
    builder.question("Word?", "Café").level(2).attempts(0).fails(0).tested_ago(24h);
    builder.question("Next?", "next").level(0).tested_ago(1h);
    start();
    yes();
    toolbar(4);
    desktop.expect_box(wrong_answer_text("Cafe\u0301", "Café"));
    type_answer("Cafe\u0301");
    enter_in_answer();
    ASSERT_FALSE(desktop.boxes.empty());
    EXPECT_EQ(desktop.boxes.back().marked, Marks{});
}

/// The verdict on a typed answer cannot be stored.
class TypedVerdictFailure : public JudgedAnswer, public testing::WithParamInterface<std::pair<fakes::Operation, int>> {
protected:
    void fail()
    {
        database.fail_at(GetParam().first, GetParam().second);
        desktop.expect_box("The course " + path + " could not be read or written.\r\n\r\nThe disk is full.");
    }

    void expect_as_before(const std::string& typed)
    {
        EXPECT_EQ(stored(1).q_side.attempts, 4);
        EXPECT_EQ(logic->course.params.score_today, 0);
        EXPECT_EQ(question(), "France?");
        EXPECT_EQ(answer(), typed);
        EXPECT_FALSE(form1.Text_a.locked);
    }
};

TEST_P(TypedVerdictFailure, of_a_right_answer_leaves_it_to_be_judged_again)
{
    fail();
    enter("paris");
    expect_as_before("paris");
    enter_in_answer();
    expect_known();
    EXPECT_EQ(logic->course.params.score_today, 1);
}

TEST_P(TypedVerdictFailure, of_a_wrong_answer_leaves_it_to_be_judged_again)
{
    desktop.expect_box(wrong_answer_text("Rome", "Paris"));
    fail();
    enter("Rome");
    expect_as_before("Rome");
    EXPECT_EQ(form1.screen.P_status.background, std::nullopt);
    desktop.expect_box(wrong_answer_text("Rome", "Paris"));
    enter_in_answer();
    expect_not_known();
    EXPECT_EQ(logic->course.params.score_today, -1);
}

INSTANTIATE_TEST_SUITE_P(Steps, TypedVerdictFailure,
                         testing::Values(std::pair(fakes::Operation::begin, 1), std::pair(fakes::Operation::query, 1),
                                         std::pair(fakes::Operation::execute, 1),
                                         std::pair(fakes::Operation::execute, 2),
                                         std::pair(fakes::Operation::commit, 1)));

class AnswerAfterAHint : public DrillFixture {
protected:
    void SetUp() override
    {
        start_with_three_questions();
        yes();
    }
};

TEST_F(AnswerAfterAHint, is_told_why_it_does_not_count_although_it_is_right)
{
    toolbar(4);
    type_answer("paris");
    desktop.expect_box("Your answer is: \r\n\r\n   paris\r\n\r\nThe correct answer is: \r\n\r\n   Paris");
    enter_in_answer();
    EXPECT_EQ(stored(1).q_side.successes, 0);
    EXPECT_EQ(status(), "An answer that is typed after a hint or the answer itself counts as not known.");
    clock.advance_seconds(5);
    form1.timer_250_ms.tick();
    EXPECT_EQ(status(), "");
}

TEST_F(AnswerAfterAHint, that_is_wrong_needs_no_reason)
{
    toolbar(4);
    type_answer("Lyon");
    desktop.expect_box("Your answer is: \r\n\r\n   Lyon\r\n\r\nThe correct answer is: \r\n\r\n   Paris");
    enter_in_answer();
    EXPECT_EQ(status(), "");
}

TEST_F(AnswerAfterAHint, of_nothing_but_line_ends_is_none_and_shows_the_answer)
{
    form1.Text_a.text_value = " \r\n ";
    enter_in_answer();
    EXPECT_EQ(answer(), "Paris");
    EXPECT_TRUE(logic->state.AwaitingVerdict);
    EXPECT_EQ(stored(1).q_side.attempts, 4);
}

TEST_F(AnswerAfterAHint, can_have_its_shape_shown_in_place_of_words_while_it_is_typed)
{
    toolbar(4);
    EXPECT_FALSE(form1.toolbar(4).is_enabled);
    toolbar(5);
    ASSERT_TRUE(form1.toolbar(4).is_enabled);
    toolbar(4);
    EXPECT_EQ(form1.t_hint.text_value, std::string(5, HintMask));
    EXPECT_FALSE(form1.toolbar(4).is_enabled);
    EXPECT_TRUE(form1.Text_a.has_focus());
}

} // namespace
} // namespace cuedrill::drill
