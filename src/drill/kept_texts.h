#pragma once

#include "app/base/trace_log.h"
#include "bank/record_bank.h"
#include "drill/editor_boxes.h"
#include "drill/noted_failures.h"
#include "drill/status_line.h"
#include "keep/draft_file.h"
#include "keep/removed_entry.h"
#include "keep/removed_file.h"
#include "platform/clock.h"
#include "platform/text_compare.h"
#include "store/course.h"
#include "store/records.h"

#include <functional>
#include <optional>
#include <string>

namespace cuedrill::drill {

/// Keeps what leaves the open course, or was typed and not saved, in "removed.txt", and what is being typed in a draft.
/// A failure stops nothing. It goes to the trace, and the first one of the session to the status line, too, with the
/// next tick of a timer: a transaction may be open before that.
class KeptTexts {
public:
    struct Services {
        StatusLine& status;
        platform::Clock& clock;
        const platform::TextCompare& text_compare;
        app::TraceLog& trace;
    };

    KeptTexts(const store::Course& course, keep::RemovedFile& removed, keep::DraftFile& draft, const Services& services)
        : course_(course), removed_(removed), draft_(draft), services_(services),
          failures_(services.status, services.trace, "Texts could not be kept.", "texts not kept")
    {
    }

    /// Keeps the texts of a record before the course loses them. Shows nothing.
    void keep_lost(bank::Loss loss, const store::QaTexts& texts);

    /// Keeps texts that were typed and are not saved, or may not be.
    /// @return whether they are in "removed.txt"; otherwise they stay in the draft, if possible, for the next start.
    bool keep_unsaved(const RecordTexts& typed, Unsaved certainty);

    /// Keeps the drafts of programs that ended without doing so themselves. Call it once, at the start.
    void keep_left_drafts();

    /// Notes what stands in the boxes of the editor. A second after a change it becomes the draft, if `is_unsaved` says
    /// that there is something to save; otherwise the draft is removed.
    void note_typed(const RecordTexts& typed, Unsaved certainty, const std::function<bool()>& is_unsaved);

    /// Removes the draft, because its texts are saved.
    void drop_draft();

    /// Says in the status line that the record just deleted is kept, if it is.
    void tell_deleted();
    /// Says in the status line, as soon as no other text is there, that unsaved texts are kept, or texts that may be
    /// saved.
    void tell_unsaved(Unsaved certainty);

    /// Writes failures to the trace and has the status line tell the first one of the session.
    /// @throws common::ProgramEnded when the program is ended while the box about a full trace is open.
    void tell_failures() { failures_.tell(); }

    /// The failures that were not told yet, for the trace; empty if there are none.
    [[nodiscard]] std::string take_failures() { return failures_.take(); }

private:
    [[nodiscard]] std::string entry(keep::Reason reason, store::QaTexts texts) const;
    [[nodiscard]] std::string entry_of_typed(const RecordTexts& typed, Unsaved certainty) const;
    [[nodiscard]] bool append(const std::string& entry);

    const store::Course& course_;
    keep::RemovedFile& removed_;
    keep::DraftFile& draft_;
    Services services_;

    bool deleted_kept_ = false; ///< the texts of the last deletion are in "removed.txt"
    NotedFailures failures_;

    std::optional<RecordTexts> noted_; ///< texts of the boxes at the last tick
    std::optional<double> due_;        ///< monotonic time in seconds at which they become the draft
};

} // namespace cuedrill::drill
