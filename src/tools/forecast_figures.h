#pragma once

#include "common/date_time.h"
#include "scheduler/counts.h"
#include "scheduler/forecast.h"

#include <string>

namespace cuedrill::tools {

/// A date as "2026-11-23".
[[nodiscard]] std::string iso_date(common::DateTime day);

/// The forecast in JSON, with each day from tomorrow on.
/// @param now when it was made.
[[nodiscard]] std::string forecast_json(const scheduler::Forecast& forecast, common::DateTime now);

/// The numbers of questions by level as a list in JSON.
[[nodiscard]] std::string levels_json(const scheduler::LevelNumbers& levels);

} // namespace cuedrill::tools
