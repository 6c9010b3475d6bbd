#pragma once

#include "bank/record_bank.h"
#include "common/errors.h"
#include "drill/display.h"
#include "drill/drill_state.h"
#include "drill/edit_flags.h"
#include "drill/editor_boxes.h"
#include "drill/kept_texts.h"
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

/// Result of a save.
enum class SaveResult {
    saved,
    rejected, ///< a text is empty or is a duplicate; a box says so, and the case decides whether the editor stays open
    refused   ///< the course did not store the texts; a box says why, and the editor stays open with them
};

/// Lets the user add, change and delete records in the two text boxes of the main window.
class RecordEditor {
public:
    struct Services {
        platform::Desktop& desktop;
        const platform::TextCompare& text_compare;
        Display& display;
        Statistics& statistics;
        Scoring& scoring;
        Selection& selection;
        KeptTexts& kept;
    };

    RecordEditor(store::Course& course, const DrillState& state, EditFlags& flags, bank::RecordBank& bank,
                 EditorBoxes& boxes, const Services& services)
        : course_(course), state_(state), flags_(flags), bank_(bank), boxes_(boxes), services_(services)
    {
    }

    /// Empties both boxes for a new record; no question is on display afterwards. Emptying unsaved texts can be undone
    /// in each box.
    /// @throws platform::DatabaseError if a change of unknown outcome cannot be settled; nothing is emptied then.
    void begin_new_record();

    /// Opens the current record for editing and shows its answer. Without a current record it does nothing.
    void begin_edit();

    /// Stores the texts in the boxes as a new record, or in place of the current one, whose history then starts again.
    /// The stored record becomes the current one. If another program has deleted the record being changed, the user is
    /// asked whether to save the texts as a new one. If it is unknown whether the texts are stored, the editor stays
    /// open, and the next call finds out.
    SaveResult save_record();

    /// If there are unsaved changes, asks whether to save them; then leaves the editor. If the texts are not accepted,
    /// the editor stays open with them.
    /// @return whether the texts in the boxes may be replaced: they are saved, or the user does not want to save them.
    /// @throws whatever `save_record` throws.
    bool ask_to_save();

    /// Asks the question of `ask_to_save` even if nothing was changed; on Yes it saves as `save_record` does.
    /// @return the result of `save_record`; `saved` if the user does not want to save.
    SaveResult offer_to_save();

    /// Leaves the editor without saving. Changed texts are kept in "removed.txt"; they stay in the boxes for reading
    /// and copying. They belong to no record, so no question is on display then, and the status line says that they are
    /// not saved, or may not be.
    void leave_editor();

    /// Leaves the editor without saving; changed texts are kept in "removed.txt". The caller fills the boxes
    /// afterwards.
    void close_editor();

    /// After a confirmation, deletes the current record and asks the next question. Without a current record it only
    /// empties the boxes.
    /// @throws platform::DatabaseError; until the record is deleted, nothing has changed.
    void delete_record();

    /// Whether the boxes hold unsaved changes; always true after a save whose outcome is unknown.
    [[nodiscard]] bool has_changes() const;

    /// Leaves the editor without a repaint, because the course is closed or the program ends; changed texts are kept in
    /// "removed.txt".
    void forget();

    /// Writes changed texts to the draft of this process soon after they were typed. Call it several times a second.
    void write_draft();

    [[nodiscard]] bool editing() const { return flags_.editing(); }

private:
    /// Whether the editor stays open when a save is rejected for an empty question or a duplicate answer.
    enum class Rejection { leaves_editor, keeps_editor };

    bool keep_unsaved_texts();
    [[nodiscard]] bool has_unsaved_texts() const;
    [[nodiscard]] Unsaved certainty() const { return save_is_unknown_ ? Unsaved::perhaps : Unsaved::surely; }
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
    bool save_is_unknown_ = false; ///< the outcome of the last save is unknown
};

} // namespace cuedrill::drill
