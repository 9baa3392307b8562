#pragma once

#include "core/growth/StorageHistory.h"
#include "core/history/HistoryExport.h"

#include <string>

/// Reports of the daily sizes.
namespace tidemark::storageHistoryExport {

/// A report with a row for each size: when it was measured, of what, and its bytes, in the order of
/// the series and of time. Paths and names of volumes are left out unless private details are
/// requested. Dates are ISO 8601 in UTC, as in a `HistoryExport`.
std::string data(const StorageHistory& history, HistoryExport::Format format,
                 bool includePrivateDetails);

} // namespace tidemark::storageHistoryExport
