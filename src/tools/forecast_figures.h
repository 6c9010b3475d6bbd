#pragma once

#include "common/date_time.h"
#include "scheduler/forecast.h"

#include <string>

namespace cuedrill::tools {

/// A date as "2026-11-23".
[[nodiscard]] std::string iso_date(common::DateTime day);

/// The forecast in JSON, with each day from tomorrow on.
/// @param now when it was made.
[[nodiscard]] std::string forecast_json(const scheduler::Forecast& forecast, common::DateTime now);

} // namespace cuedrill::tools
