#pragma once

namespace cuedrill::bank {

/// Where a record is shown that came into the course otherwise than by being typed.
class StoredRecordView {
public:
    virtual ~StoredRecordView() = default;

    /// Shows the course's current record, without its answer, and the counts as they are in the course now.
    virtual void show_stored_record() = 0;

    /// Brings what lists the records up to date, after the last one has come. Failures are told there.
    virtual void show_all_stored() = 0;
};

} // namespace cuedrill::bank
