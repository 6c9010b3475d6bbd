#pragma once

#include "drill/display.h"
#include "drill/drill_state.h"
#include "drill/edit_flags.h"
#include "drill/hints.h"
#include "drill/key_policy.h"
#include "drill/question_dialog.h"
#include "drill/status_line.h"
#include "drill/window_layout.h"
#include "platform/desktop.h"
#include "platform/form1.h"
#include "platform/text_compare.h"

#include <string>
#include <string_view>

namespace cuedrill::drill {

/// The answer as the user types it into the answer box, or puts it together from the words of a hint.
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
    };

    TypedAnswer(platform::Form1& form1, DrillState& state, const EditFlags& flags, const Services& services)
        : form1_(form1), state_(state), flags_(flags), services_(services)
    {
    }

    /// Attaches the answer box and the hint.
    void attach();

    /// A key in the answer box that the window has left alone.
    /// @return whether it is swallowed.
    bool OnAnswerKey(const platform::KeyPress& press);

    /// Takes the text of the answer box for the user's answer, gives the verdict on it and asks the next question. It
    /// must be the stored answer, but for its case and the blanks around it; after the answer or a hint was shown it
    /// counts as not known in any case.
    void JudgeTypedAnswer();

    /// Adds the chosen word of the hint to the answer. The first word that does not continue the stored answer ends the
    /// question as not known, and the one that completes it as known.
    void OnHintClick();

    /// A key in the hint box: Enter and the blank choose a word; nothing changes the hint.
    /// @return whether it is swallowed: always.
    bool OnHintKey(const platform::KeyPress& press);

private:
    bool run(const platform::KeyPress& press, void (TypedAnswer::*command)());
    void show_answer();
    void on_enter();
    void reveal();
    [[nodiscard]] bool marked_as_known() const;
    bool insert_before_end(const platform::KeyPress& press);
    void succeed(const std::string* answer_before = nullptr);
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
