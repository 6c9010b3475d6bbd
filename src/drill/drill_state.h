#pragma once

#include "common/int16.h"

#include <string>

namespace cuedrill::drill {

/// State of the three-button dialog.
enum class DialogState : common::Int16 {
    AskToStart = 1,  ///< "Shall a question be asked?"
    OfferAnswer = 2, ///< a question is on display: "Show its answer?"
    AskKnown = 3     ///< the answer is on display: "Did you know it?"
};

/// What is shown in the area shared by statistics, hints and lists.
enum class SharedPlace { statistics, hint, list };

/// The record on display. Only Display writes it.
class ShownRecord {
public:
    /// Key of the record; 0 for none.
    [[nodiscard]] common::Int16 current_cnt() const { return current_cnt_; }
    /// Key of the record that was current when the next question was last requested; 0 for none.
    [[nodiscard]] common::Int16 previous_cnt() const { return previous_cnt_; }
    /// Whether a question is on display. Without one, nothing can be revealed or judged.
    [[nodiscard]] bool is_question() const { return current_cnt_ != 0; }

    /// The texts of the record as they were loaded: the side that is asked, and the answer.
    [[nodiscard]] const std::string& loaded_question() const { return question_; }
    [[nodiscard]] const std::string& loaded_answer() const { return answer_; }

private:
    friend class Display;

    common::Int16 current_cnt_ = 0;
    common::Int16 previous_cnt_ = 0;
    std::string question_;
    std::string answer_;
};

/// What is on display, and what the user has done about it.
struct DrillState {
    ShownRecord shown;

    DialogState dialog = DialogState::AskToStart;

    /// The right button was pressed on "Yes" and has been handled; ignore the click that may follow.
    bool RightClickConsumed = false;
    /// Empty, "+" or "-": the user's own judgement before the answer was revealed. It only selects the colour of the
    /// answer.
    std::string SelfJudgement;
    /// A hint was shown, or the command has revealed the answer. A typed answer no longer counts as known.
    bool AnswerShown = false;
    /// The answer was revealed by the command, and the user must give the verdict with "+" or "-".
    bool AwaitingVerdict = false;
    /// The user is typing the answer. Until it is shown, "*", "+" and "-" are ordinary characters.
    bool TypingMode = false;
    /// The answer box shows the stored answer, however it was revealed; the user can no longer type one.
    bool answer_revealed = false;

    SharedPlace shared_place = SharedPlace::statistics;
    bool list_built = false;     ///< a list has been built in this course and can be recalled
    bool hint_is_masked = false; ///< the last hint was the masked answer, not a list of words

    /// Whether a list of records takes the place of the statistics and hints.
    [[nodiscard]] bool list_shown() const { return shared_place == SharedPlace::list; }

    /// Whether the user has seen the answer and owes a verdict: the status line asks for it.
    [[nodiscard]] bool verdict_requested() const
    {
        return AwaitingVerdict || (answer_revealed && SelfJudgement == "-");
    }

    /// Clears the state of the answer, and its hint. A list stays.
    void clear_answer()
    {
        SelfJudgement.clear();
        AnswerShown = false;
        AwaitingVerdict = false;
        TypingMode = false;
        answer_revealed = false;
        if (shared_place == SharedPlace::hint)
            shared_place = SharedPlace::statistics;
    }
};

} // namespace cuedrill::drill
