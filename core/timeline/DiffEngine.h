#pragma once

#include "core/records/Change.h"
#include "core/records/Snapshot.h"

#include <cstdint>
#include <vector>

/// Compares two observations. Sizes change all the time, so only differences that reach a fixed
/// threshold are reported. A folder can be unreadable or not selected in one of the observations,
/// so only folders that were read in both are compared. A size, count or fingerprint that is absent
/// on either side is never a change. Pure functions; thread-safe.
namespace tidemark::DiffEngine {

/// Sizes in bytes that differ by this much or more are reported.
inline constexpr std::int64_t folderThreshold = 1'000'000'000;
inline constexpr std::int64_t childFolderThreshold = 500'000'000;
inline constexpr std::int64_t trashThreshold = 100'000'000;
inline constexpr std::int64_t diskThreshold = 5'000'000'000;

/// The changes from `previous` to `current`: applications and background items by path, folders in
/// the order of `current`, Trash folders that were emptied but whose sizes can't be compared, free
/// space, the operating system, then the additional reports.
std::vector<Change> compare(const Snapshot& previous, const Snapshot& current);

/// Whether a child folder changed by `childFolderThreshold` or more. The files directly in the
/// folder are not a child. False for the Trash, and when the children of either are not known.
bool hasSignificantChildChange(const FolderSize& before, const FolderSize& after);

/// True when a child changed significantly but the total by less than `folderThreshold`: the
/// contents changed, not the size.
bool isContentsChange(const FolderSize& before, const FolderSize& after);

} // namespace tidemark::DiffEngine
