#pragma once

#include "core/records/Snapshot.h"

#include <string_view>

/// Whether something that an event is about is there still, as far as the newest snapshot can say.
/// Only a place that was read completely says that something is absent.
namespace tidemark::LatestPresence {

enum class State { present, absent, unknown };

State ofApplication(std::string_view path, const Snapshot& latest);
State ofDefinition(std::string_view path, const Snapshot& latest);
/// A monitored folder; never absent, as it may be monitored no longer.
State ofFolder(std::string_view path, const Snapshot& latest);

} // namespace tidemark::LatestPresence
