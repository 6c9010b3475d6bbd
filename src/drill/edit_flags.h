#pragma once

namespace cuedrill::drill {

/// Whether a record is being edited in the two text boxes. At most one flag is set.
struct EditFlags {
    bool new_mode = false;  ///< a new record is being written
    bool edit_mode = false; ///< the current record is being changed

    [[nodiscard]] bool editing() const { return new_mode || edit_mode; }
    void clear() { *this = {}; }
};

} // namespace cuedrill::drill
