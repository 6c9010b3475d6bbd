#pragma once

#include "drill/drill_fixture.h"

#include <cstddef>
#include <deque>
#include <string>
#include <vector>

namespace cuedrill::drill {

/// Tests that show hints and choose words in them.
class HintsFixture : public DrillFixture {
protected:
    using Words = std::vector<std::string>;

    /// Shows the hint, with these random numbers for it.
    void show_hint(std::deque<double> numbers = {});

    [[nodiscard]] std::string hint() const;

    /// What stands in the brackets, in order.
    [[nodiscard]] Words words() const;

    /// The place of the first character of a word of the hint.
    [[nodiscard]] std::size_t word_place(const std::string& word) const;

    void click_hint(std::size_t place);
    void click_word(const std::string& word);

    /// Leads the caret to a word with the arrow keys.
    void go_to_word(const std::string& word);
    void press_in_hint(const platform::KeyPress& key);

    /// A course whose first question has this answer, and the others those.
    void start_with_answers(const std::string& first, const Words& others);
};

} // namespace cuedrill::drill
