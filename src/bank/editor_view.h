#pragma once

namespace cuedrill::bank {

/// Where a record is shown after it was stored.
class EditorView {
public:
    virtual ~EditorView() = default;

    /// Shows the course's current record and the counts as they are in the course now.
    virtual void show_stored_record() = 0;
};

} // namespace cuedrill::bank
