#pragma once

#include "core/records/Snapshot.h"

#include <string_view>

/// Whether the subject of an event still exists, according to the newest snapshot. It counts as
/// absent only when its place was read completely.
namespace tidemark::LatestPresence {

enum class State { present, absent, unknown };

State ofApplication(std::string_view path, const Snapshot& latest);
State ofDefinition(std::string_view path, const Snapshot& latest);
/// A monitored folder. Never reported as absent, because it may just not be monitored any more.
State ofFolder(std::string_view path, const Snapshot& latest);

} // namespace tidemark::LatestPresence
