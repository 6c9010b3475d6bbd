#pragma once

#include "drill/display.h"
#include "drill/drill_state.h"
#include "drill/edit_flags.h"
#include "drill/hints.h"
#include "drill/key_policy.h"
#include "drill/narrator.h"
#include "drill/question_dialog.h"
#include "drill/status_line.h"
#include "drill/window_layout.h"
#include "platform/desktop.h"
#include "platform/form1.h"
#include "platform/text_compare.h"
#include "scheduler/verdict.h"

#include <string>
#include <string_view>

namespace cuedrill::drill {

/// The answer that the user types into the answer box or puts together from the words of a hint.
///
/// Functions that judge may throw what `QuestionDialog::SucceedAndNext` and `FailAndNext` throw.
class TypedAnswer {
public:
    struct Services {
        Display& display;
        QuestionDialog& dialog;
        StatusLine& status;
        Hints& hints;
        WindowLayout& layout;
        KeyPolicy& key_policy;
        platform::Desktop& desktop;
        const platform::TextCompare& text_compare;
        const Narrator& narrator;
    };

    TypedAnswer(platform::Form1& form1, DrillState& state, const EditFlags& flags, const Services& services)
        : form1_(form1), state_(state), flags_(flags), services_(services)
    {
    }

    /// Attaches the keys of the answer box, and the clicks and keys of the hint.
    void attach();

    /// Handles a key in the answer box that the window did not consume.
    /// @return whether the key is consumed.
    bool OnAnswerKey(const platform::KeyPress& press);

    /// Judges the text of the answer box and asks the next question. It is right if it equals the stored answer,
    /// ignoring case and surrounding white space. After the answer or a hint was shown it always counts as not known.
    void JudgeTypedAnswer();

    /// Adds the chosen word of the hint to the answer. The first word that does not continue the stored answer ends the
    /// question as not known; the word that completes it ends it as known.
    void OnHintClick();

    /// Handles a key in the hint box: Enter and blank choose a word; other keys are ignored.
    /// @return whether the key is consumed: always true, because the hint is read-only.
    bool OnHintKey(const platform::KeyPress& press);

private:
    bool run(const platform::KeyPress& press, void (TypedAnswer::*command)());
    void show_answer();
    void on_enter();
    void reveal();
    void beep();
    [[nodiscard]] bool marked_as_known() const;
    bool insert_before_end(const platform::KeyPress& press);
    void succeed(scheduler::JudgedBy by, const std::string* answer_before = nullptr);
    void msgbox_incorrect_answer(const std::string& typed, const std::string& correct);
    void put(const std::string& answer);
    [[nodiscard]] bool begins_stored_answer(const std::string& text) const;
    [[nodiscard]] bool same(std::string_view a, std::string_view b) const;

    platform::Form1& form1_;
    DrillState& state_;
    const EditFlags& flags_;
    Services services_;
};

} // namespace cuedrill::drill
