#pragma once

#include "platform/clock.h"
#include "platform/files.h"
#include "platform/text_compare.h"
#include "store/course.h"

#include <cstdint>
#include <string>

namespace cuedrill::exchange {

/// Result of an export.
struct Exported {
    std::int64_t count = 0;   ///< number of records
    std::int64_t changed = 0; ///< number of records that an import of the file would not restore unchanged
    std::string lines{};      ///< one line for each of the changed records
};

/// Writes the records of the open course to a question text file.
class Exporter {
public:
    Exporter(store::Course& course, platform::Files& files, platform::Clock& clock,
             const platform::TextCompare& text_compare)
        : course_(course), files_(files), clock_(clock), text_compare_(text_compare)
    {
    }

    /// Writes the file at `path`, replacing an existing one.
    /// @param numbered whether each record is preceded by its number, counted from 1.
    /// @throws common::Error, which also says where an unfinished file is kept; the file at `path` is unchanged then.
    Exported export_file(const std::string& path, bool numbered);

private:
    store::Course& course_;
    platform::Files& files_;
    platform::Clock& clock_;
    const platform::TextCompare& text_compare_;
};

} // namespace cuedrill::exchange
