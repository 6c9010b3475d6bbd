#pragma once

#include "drill/drill_fixture.h"

#include <deque>
#include <string>
#include <utility>
#include <vector>

namespace cuedrill::drill {

/// Tests that show hints and choose words in them.
class HintsFixture : public DrillFixture {
protected:
    using Words = std::vector<std::string>;

    /// Shows the hint, with these random numbers for it.
    void show_hint(std::deque<double> numbers = {})
    {
        random.queue = std::move(numbers);
        random.calls = 0;
        database.forget();
        toolbar(4);
    }

    [[nodiscard]] std::string hint() const { return form1.t_hint.text_value; }

    /// What stands in the brackets, in order.
    [[nodiscard]] Words words() const
    {
        Words result;
        const std::string text = hint();
        for (std::size_t begin = text.find('['); begin != std::string::npos; begin = text.find('[', begin + 1))
            result.push_back(text.substr(begin + 1, text.find(']', begin) - begin - 1));
        return result;
    }

    /// The place of the first character of a word of the hint.
    [[nodiscard]] std::size_t word_place(const std::string& word) const
    {
        const std::size_t bracket = hint().find("[" + word + "]");
        EXPECT_NE(bracket, std::string::npos) << word << " is not in the hint" << hint();
        return common::code_points(hint().substr(0, bracket)) + 1;
    }

    void click_hint(std::size_t place)
    {
        user([&] { form1.t_hint.click(place); });
    }
    void click_word(const std::string& word) { click_hint(word_place(word)); }

    /// Leads the caret to a word with the arrow keys.
    void go_to_word(const std::string& word)
    {
        form1.t_hint.take_focus();
        form1.t_hint.caret_value = word_place(word);
    }
    void press_in_hint(const platform::KeyPress& key)
    {
        clock.steady_seconds_more += 1;
        user([&] { form1.press_in(form1.t_hint, key); });
    }

    /// A course whose first question has this answer, and the others those.
    void start_with_answers(const std::string& first, const Words& others)
    {
        builder.question("first", first).level(2).attempts(4).fails(1).tested_ago(24h);
        for (const std::string& other : others)
            builder.question("asks for " + other, other).level(0).attempts(0).fails(0).tested_ago(1h);
        start();
        yes();
        ASSERT_EQ(question(), "first");
    }
};

} // namespace cuedrill::drill
