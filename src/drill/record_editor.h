#pragma once

#include "bank/record_bank.h"
#include "common/errors.h"
#include "drill/display.h"
#include "drill/drill_state.h"
#include "drill/edit_flags.h"
#include "drill/editor_boxes.h"
#include "drill/scoring.h"
#include "drill/selection.h"
#include "drill/statistics.h"
#include "platform/desktop.h"
#include "platform/text_compare.h"
#include "store/course.h"

#include <functional>
#include <optional>
#include <string>

namespace cuedrill::drill {

/// What has become of the texts in the boxes.
enum class SaveResult {
    saved,
    rejected, ///< a text is empty or already there; a box says so, and whether the editor stays open depends on which
    refused   ///< the course did not take them; a box says why, and the editor stays open with everything in it
};

/// How a person writes, changes and deletes records in the two text boxes of the main window.
class RecordEditor {
public:
    struct Services {
        platform::Desktop& desktop;
        const platform::TextCompare& text_compare;
        Display& display;
        Statistics& statistics;
        Scoring& scoring;
        Selection& selection;
    };

    RecordEditor(store::Course& course, const DrillState& state, EditFlags& flags, bank::RecordBank& bank,
                 EditorBoxes& boxes, const Services& services)
        : course_(course), state_(state), flags_(flags), bank_(bank), boxes_(boxes), services_(services)
    {
    }

    /// Empties both boxes for a new record; no question is on display any more. Texts that were typed and not saved can
    /// be brought back with an undo in each box.
    void begin_new_record();

    /// Lets the current record be changed; its answer is shown. Without a current record it does nothing.
    void begin_edit();

    /// Stores what stands in the boxes as a new record or in place of the current one, which then starts its history
    /// again. The record stored becomes the current one. Where another program has deleted the record that was changed,
    /// the user is asked whether to keep the texts as a new one. Where nobody can tell whether the texts are stored,
    /// the editor stays open; the next call finds out.
    SaveResult save_record();

    /// Asks whether to save, where something was typed, and leaves the editor. Where the texts are not taken, it stays
    /// open with them.
    /// @return whether the texts in the boxes may go: they are saved, or the user does not want them to be.
    /// @throws what `save_record` throws.
    bool ask_to_save();

    /// The question of `ask_to_save`, also where nothing was typed; on Yes it saves as `save_record` does.
    /// @return what `save_record` said; saved also when the user does not want to save.
    SaveResult offer_to_save();

    /// Leaves the editor without saving. Changed texts stay in the boxes, to be read and copied; as they are no record,
    /// no question is on display then, and the user is told, also where nobody can tell whether they are saved.
    void leave_editor();

    /// Leaves the editor without saving, for a caller that fills the boxes anew.
    void close_editor();

    /// After a confirmation, deletes the current record and asks the next question. Without a current record it only
    /// empties the boxes.
    /// @throws platform::DatabaseError; before the record is deleted, nothing has changed.
    void delete_record();

    /// Whether the boxes hold something that would have to be saved. After a save of unknown outcome they do, whatever
    /// stands in them.
    [[nodiscard]] bool has_changes() const;

    /// Leaves the editor without a word and without a repaint: the course is another one.
    void forget() { flags_.clear(); }

    [[nodiscard]] bool editing() const { return flags_.editing(); }

private:
    /// What becomes of the editor where an empty question, or an answer that is there already, is rejected.
    enum class Rejection { leaves_editor, keeps_editor };

    SaveResult save(Rejection rejection);
    SaveResult reject(const bank::Refusal& refusal, const RecordTexts& texts, Rejection rejection);
    SaveResult finish_save(common::Int16 cnt);
    [[nodiscard]] bool is_saving_wanted();
    [[nodiscard]] std::string entered(const std::string& text) const;
    [[nodiscard]] RecordTexts entered_texts();
    [[nodiscard]] bank::Draft draft_of(const RecordTexts& texts) const;
    [[nodiscard]] std::optional<common::Int16> saved_after_all(const RecordTexts& texts);
    SaveResult keep_as_new(const RecordTexts& texts, const store::RecordGone& error, Rejection rejection);
    void show_saved(common::Int16 cnt);
    [[nodiscard]] std::function<void()> forget_verdict(common::Int16 cnt);
    void tell_refusal(const RecordTexts& texts, const common::Error& error);

    store::Course& course_;
    const DrillState& state_;
    EditFlags& flags_;
    bank::RecordBank& bank_;
    EditorBoxes& boxes_;
    Services services_;
    bool save_is_unknown_ = false; ///< whether the texts in the boxes are stored already
};

} // namespace cuedrill::drill
