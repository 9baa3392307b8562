#pragma once

#include "core/records/Event.h"

#include <stop_token>
#include <string_view>
#include <vector>

/// Searches the whole history, independent of the view and filters that are chosen
/// (`HistoryPlace`).
namespace tidemark::HistoryMatches {

inline constexpr std::size_t limit = 40;

/// The first `limit` of `events` that contain `query` in their texts, in their order. White space
/// at the ends of `query` is ignored; an empty query matches every event. When `stop` is
/// requested, returns early with what it has found.
std::vector<Shared<Event>> find(const std::vector<Shared<Event>>& events, std::string_view query,
                                const std::stop_token& stop = {});

} // namespace tidemark::HistoryMatches
