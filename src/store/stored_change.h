#pragma once

#include "common/date_time.h"
#include "common/int16.h"

#include <cstdint>
#include <optional>

namespace cuedrill::store {

/// A verdict that is stored, or the one that an undo has taken back.
struct StoredJudgement {
    bool known = false;
    bool typed = false; ///< the program has compared an answer; otherwise the user has judged
    common::Int16 level_before = 0;
    common::Int16 level_after = 0;
    double elapsed = 0; ///< days since the last test, or what a question never tested counts as
    common::DateTime when{};
};

/// A change of the records that has just been stored.
struct StoredChange {
    enum class What {
        verdict,
        undone, ///< the level before the last verdict is restored
        reset,  ///< all levels and counters
        added,
        imported,
        changed, ///< texts
        deleted
    };

    What what = What::verdict;
    common::Int16 cnt = 0;                         ///< the record; the last one of several; 0 after a reset
    std::int64_t records = 1;                      ///< how many were added, with numbers up to `cnt`
    std::optional<StoredJudgement> judgement = {}; ///< of a verdict and of an undo
};

} // namespace cuedrill::store
