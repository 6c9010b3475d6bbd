#pragma once

#include "platform/foreign_tables.h"

#include <chrono>
#include <memory>
#include <string>

namespace cuedrill::platform::sqlite {

/// Databases of other programs, read from memory with all of the engine's defences turned on. A file with a virtual
/// table is refused, and a view cannot be read.
class SqliteForeignDatabases : public ForeignDatabases {
public:
    /// The most bytes of a text or a row. The description of all note types of a collection is a single text.
    static constexpr int longest_text = 16 * 1024 * 1024;

    /// @param most_time the most processor time for opening a database, for beginning a query, and for each row.
    explicit SqliteForeignDatabases(std::chrono::milliseconds most_time = std::chrono::seconds(5))
        : most_time_(most_time)
    {
    }

    [[nodiscard]] std::unique_ptr<ForeignTables> open(std::string bytes) const override;

private:
    std::chrono::milliseconds most_time_;
};

} // namespace cuedrill::platform::sqlite
