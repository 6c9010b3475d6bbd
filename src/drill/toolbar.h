#pragma once

#include "bank/record_editor.h"
#include "common/twips.h"
#include "drill/answer_aids.h"
#include "drill/question_dialog.h"
#include "platform/form1.h"

#include <optional>
#include <string_view>

namespace cuedrill::drill {

/// The largest multiple of 15 twips, one pixel of a usual screen, that is not above `x`.
common::Twips SnapToGrid(common::Twips x);

/// The number of the button that counts the statistics anew and shows them.
inline constexpr int statistics_button = 3;

/// The number of the button that saves the record in the editor.
inline constexpr int save_button = 10;

/// The row of buttons `pb`, numbered from 1 to 11.
class Toolbar {
public:
    Toolbar(platform::Form1& form1, QuestionDialog& dialog, bank::RecordEditor& editor, AnswerAids& aids)
        : m_form1(form1), m_dialog(dialog), m_editor(editor), m_aids(aids)
    {
    }

    /// Gives each button its caption, its width, its tool tip and its command.
    void attach();

    /// Does what a click on the button does; nothing while the button is disabled. No text box has the focus
    /// afterwards, unless the command gives it to one.
    /// @throws what the button's command throws.
    void RunToolbarCommand(int index);

    /// Does the same also while the button is disabled.
    /// @throws what the button's command throws.
    void run(int index);

    /// The button that has this key, a letter in lower case; nothing when none has.
    [[nodiscard]] static std::optional<int> button_with_key(char key);

    /// The button that has this key also together with Alt, because no menu has the letter; nothing when none has.
    [[nodiscard]] static std::optional<int> button_with_access_letter(char key);

private:
    void SetToolbarCaptions();
    void SetToolbarTooltips();
    [[nodiscard]] platform::Button& pb(int index) const;
    void save();

    platform::Form1& m_form1;
    QuestionDialog& m_dialog;
    bank::RecordEditor& m_editor;
    AnswerAids& m_aids;
};

} // namespace cuedrill::drill
