#pragma once

#include <string>
#include <vector>

namespace cuedrill::bank {

/// Where a list of records is shown, and the record that is chosen in it.
class ListScreen {
public:
    virtual ~ListScreen() = default;

    /// Shows these lines in `listav`, which takes the place of statistics and hints.
    virtual void set_for_list(std::vector<std::string> lines) = 0;
    /// Shows these lines where the list stands already.
    virtual void replace_list(std::vector<std::string> lines) = 0;
    [[nodiscard]] virtual bool list_shown() const = 0;
    /// The question of the current record, as it was put on display.
    [[nodiscard]] virtual std::string loaded_question() const = 0;
    /// Leaves the list and puts the current record on display.
    virtual void show_chosen_record() = 0;
};

} // namespace cuedrill::bank
