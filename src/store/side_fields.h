#pragma once

#include <string>

namespace cuedrill::store {

/// The six columns of `qa` that belong to one side of a record.
struct SideFields {
    std::string text;
    std::string attempts;
    std::string fails;
    std::string successes; ///< the level
    std::string date_last_test;
    std::string date_last_show;
};

/// Which columns belong to the side being asked and which to the side of the answer. Whatever concerns a side
/// names its columns through here, so that the inverted drill works on the statistics of its own direction.
struct SideMapping {
    SideFields Q_FIELD; ///< the asked side
    SideFields A_FIELD; ///< the answer side
};

/// The mapping of a course: `q` is asked, or `a` when the course is inverted.
SideMapping set_side_fields(bool invert);

} // namespace cuedrill::store
