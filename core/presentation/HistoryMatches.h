#pragma once

#include "core/records/Event.h"

#include <stop_token>
#include <string_view>
#include <vector>

/// Searches the whole history, independent of the user's place in it.
namespace tidemark::HistoryMatches {

inline constexpr std::size_t limit = 40;

/// The first `limit` of `events` that contain `query` in their texts, in their order; white space
/// at the ends of `query` does not count, and an empty one is in every event. When `stop` is
/// requested, returns early with what it has found.
std::vector<Shared<Event>> find(const std::vector<Shared<Event>>& events, std::string_view query,
                                const std::stop_token& stop = {});

} // namespace tidemark::HistoryMatches
