#pragma once

#include "common/int16.h"

#include <string>

namespace cuedrill::drill {

/// What the three-button dialog is asking.
enum class DialogState : common::Int16 {
    AskToStart = 1,  ///< shall a question be asked?
    OfferAnswer = 2, ///< a question is on display; show its answer?
    AskKnown = 3     ///< the answer is on display; was it known?
};

/// What stands in the place that statistics, hints and lists share.
enum class SharedPlace { statistics, hint, list };

/// The record on display. Only Display writes it.
class ShownRecord {
public:
    /// Key of the record; 0 for none.
    [[nodiscard]] common::Int16 current_cnt() const { return current_cnt_; }
    /// Key of the record that was on display when the next question was last asked for; 0 for none.
    [[nodiscard]] common::Int16 previous_cnt() const { return previous_cnt_; }
    /// Whether a question is on display; without one, nothing can be revealed or judged.
    [[nodiscard]] bool is_question() const { return current_cnt_ != 0; }

    /// The texts of the record as they were loaded: the asked side, and the answer side.
    [[nodiscard]] const std::string& loaded_question() const { return question_; }
    [[nodiscard]] const std::string& loaded_answer() const { return answer_; }

private:
    friend class Display;

    common::Int16 current_cnt_ = 0;
    common::Int16 previous_cnt_ = 0;
    std::string question_;
    std::string answer_;
};

/// What is on display, and what has been done about it.
struct DrillState {
    ShownRecord shown;

    DialogState dialog = DialogState::AskToStart;

    /// The right button went down on "Yes": the click that may follow does nothing.
    bool RightClickConsumed = false;
    /// Empty, or "+" or "-": what the user thought of the answer before it was revealed. It only colours the answer.
    std::string SelfJudgement;
    /// The stored answer was revealed by the command, or a hint was shown: a typed answer no longer counts as known.
    bool AnswerShown = false;
    /// The answer was revealed by the command, and the verdict is to be given with "+" or "-".
    bool AwaitingVerdict = false;
    /// The answer is being typed: until it is shown, "*", "+" and "-" are ordinary characters of it.
    bool TypingMode = false;
    /// The answer box shows the stored answer, in whichever way it came there; nothing is typed any more.
    bool answer_revealed = false;

    SharedPlace shared_place = SharedPlace::statistics;
    bool list_built = false;     ///< there was a list in this course, which can be recalled
    bool hint_is_masked = false; ///< the hint that was shown last is the masked answer, not a list of words

    /// A list of records stands where the drill shows its statistics and hints.
    [[nodiscard]] bool list_shown() const { return shared_place == SharedPlace::list; }

    /// Forgets what was done about the answer, its hint included. A list stays.
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
