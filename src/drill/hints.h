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

/// Stands for each hidden letter or digit in a masked hint: a character that no answer contains.
inline constexpr char HintMask = '\x01';

/// Number of answers whose words make up a word list, the right one included.
inline constexpr int HintSampleSize = 15;

/// The hint box: words from which the answer can be put together, or the shape of the answer.
class Hints {
public:
    Hints(platform::Form1& form1, store::Course& course, DrillState& state, WindowLayout& layout,
          platform::RandomSource& random, const platform::TextCompare& text_compare)
        : form1_(form1), course_(course), state_(state), layout_(layout), random_(random), text_compare_(text_compare)
    {
    }

    /// Shows the words of the answer among those of answers drawn at random, in alphabetical order.
    /// @throws platform::DatabaseError; what stood in the shared place stays.
    void BuildWordListHint();

    /// Shows the answer with a mask in place of each letter and digit.
    void BuildMaskedHint();

    /// The word of the list in whose brackets, or on the blanks behind which, the user has clicked; or to which the
    /// arrow keys have led.
    [[nodiscard]] std::optional<std::string> chosen_word() const;

private:
    struct Word {
        std::string text;
        common::TextRange place; ///< in the hint, without the brackets
    };

    void show(const std::string& text, bool masked);
    [[nodiscard]] std::vector<std::string> draw_answers();
    [[nodiscard]] std::vector<std::string> sorted_words(const std::vector<std::string>& answers) const;
    [[nodiscard]] std::int64_t draw_position(std::int64_t count);

    platform::Form1& form1_;
    store::Course& course_;
    DrillState& state_;
    WindowLayout& layout_;
    platform::RandomSource& random_;
    const platform::TextCompare& text_compare_;
    std::vector<Word> words_; ///< of the hint on display; none in a masked hint
};

} // namespace cuedrill::drill
