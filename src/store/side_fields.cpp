#include "store/side_fields.h"

#include <utility>

namespace cuedrill::store {
namespace {

SideFields side(const std::string& letter)
{
    return {.text = letter,
            .attempts = letter + "_attempts",
            .fails = letter + "_fails",
            .successes = letter + "_successes",
            .date_last_test = letter + "_date_last_test",
            .date_last_show = letter + "_date_last_show"};
}

} // namespace

SideMapping set_side_fields(bool invert)
{
    SideMapping mapping{.Q_FIELD = side("q"), .A_FIELD = side("a")};
    if (invert)
        std::swap(mapping.Q_FIELD, mapping.A_FIELD);
    return mapping;
}

} // namespace cuedrill::store
