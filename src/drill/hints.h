#pragma once

#include "drill/drill_state.h"
#include "drill/window_layout.h"
#include "platform/form1.h"
#include "platform/random_source.h"
#include "platform/text_compare.h"
#include "store/course.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace cuedrill::drill {

/// Takes the place of each hidden letter or digit in a masked hint. No answer contains this character.
inline constexpr char HintMask = '\x01';

/// Number of answers, including the right one, whose words make up a word list.
inline constexpr int HintSampleSize = 15;

/// The hint box: shows words from which the answer can be put together, or the masked answer.
class Hints {
public:
    Hints(platform::Form1& form1, store::Course& course, DrillState& state, WindowLayout& layout,
          platform::RandomSource& random, const platform::TextCompare& text_compare)
        : form1_(form1), course_(course), state_(state), layout_(layout), random_(random), text_compare_(text_compare)
    {
    }

    /// Shows the words of the answer mixed with those of answers drawn at random, in alphabetical order.
    /// @throws platform::DatabaseError; the shared area is unchanged then.
    void BuildWordListHint();

    /// Shows the answer with a placeholder for each letter and digit.
    void BuildMaskedHint();

    /// The word that the user clicked on, including its brackets and the blanks after it, or went to with the arrow
    /// keys. std::nullopt if there is none.
    [[nodiscard]] std::optional<std::string> chosen_word() const;

private:
    struct Word {
        std::string text;
        common::TextRange place; ///< range in the text of the hint, without the brackets
    };

    void show(const std::string& text, bool masked);
    void announce_words() const;
    void announce_shape() const;
    [[nodiscard]] std::vector<std::string> draw_answers();
    [[nodiscard]] std::vector<std::string> sorted_words(const std::vector<std::string>& answers) const;
    [[nodiscard]] std::int64_t draw_position(std::int64_t count);

    platform::Form1& form1_;
    store::Course& course_;
    DrillState& state_;
    WindowLayout& layout_;
    platform::RandomSource& random_;
    const platform::TextCompare& text_compare_;
    std::vector<Word> words_; ///< words of the hint on display; empty for a masked hint
};

} // namespace cuedrill::drill
