#pragma once

#include <string>

namespace tidemark {

struct Baseline;
struct Journal;

/// The help of an option that selects a named snapshot.
inline constexpr const char* namedSnapshotHelp = "Name or identifier of the snapshot";

/// The snapshot with this name or identifier. Throws `Error` when there is none or more than one.
Baseline namedSnapshot(const Journal& journal, const std::string& name);

} // namespace tidemark
