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

    /// Shows the hint; `numbers` are the random numbers it gets.
    void show_hint(std::deque<double> numbers = {});

    [[nodiscard]] std::string hint() const;

    /// The words in brackets, in order.
    [[nodiscard]] Words words() const;

    /// The position of the first character of a word in the hint.
    [[nodiscard]] std::size_t word_place(const std::string& word) const;

    void click_hint(std::size_t place);
    void click_word(const std::string& word);

    /// Moves the cursor to a word with the arrow keys.
    void go_to_word(const std::string& word);
    void press_in_hint(const platform::KeyPress& key);

    /// Starts on a course whose first question has the answer `first`, and the others `others`.
    void start_with_answers(const std::string& first, const Words& others);
};

} // namespace cuedrill::drill
