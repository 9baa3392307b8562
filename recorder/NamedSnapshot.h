#pragma once

#include <string>

namespace tidemark {

struct Baseline;
struct Journal;

/// The help of an option that names one.
inline constexpr const char* namedSnapshotHelp = "Name or identifier of the snapshot";

/// The snapshot of this name or identifier. Throws `Error` when there is none, or several.
Baseline namedSnapshot(const Journal& journal, const std::string& name);

} // namespace tidemark
