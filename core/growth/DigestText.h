#pragma once

#include "core/base/Calendar.h"
#include "core/growth/HistoryDigest.h"

#include <string>

namespace tidemark {

/// What the digest says, for the window and the command line alike.
namespace digestText {

/// "3 days, since 12 Mar 2026, 10:00".
std::string period(const HistoryDigest& digest, const Calendar& calendar);
/// "Applications 12 · Storage 3".
std::string counts(const HistoryDigest& digest);
/// "Downloads +4.2 GB".
std::string change(const GrowthItem& item);
/// How long nothing was observed, in one sentence; empty where there was no gap.
std::string gaps(const HistoryDigest& digest);

} // namespace digestText

} // namespace tidemark
