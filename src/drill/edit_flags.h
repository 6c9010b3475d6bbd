#pragma once

namespace cuedrill::drill {

/// What the user is doing with the two text boxes besides drilling. At most one is set.
struct EditFlags {
    bool new_mode = false;  ///< a new record is being typed
    bool edit_mode = false; ///< the current record is being changed

    [[nodiscard]] bool editing() const { return new_mode || edit_mode; }
    void clear() { *this = {}; }
};

} // namespace cuedrill::drill
