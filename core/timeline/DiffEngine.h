#pragma once

#include "core/records/Change.h"
#include "core/records/Snapshot.h"

#include <cstdint>
#include <vector>

/// What two observations tell apart. Sizes move all the time, so they are held against fixed
/// thresholds; places come and go, so only what both observations could see is compared. An
/// absent field on either side is never a change. Pure functions; safe on any thread.
namespace tidemark::DiffEngine {

/// Bytes, compared at this value or above.
inline constexpr std::int64_t folderThreshold = 1'000'000'000;
inline constexpr std::int64_t childFolderThreshold = 500'000'000;
inline constexpr std::int64_t trashThreshold = 100'000'000;
inline constexpr std::int64_t diskThreshold = 5'000'000'000;

/// The changes from `previous` to `current`: applications and background items by path, folders
/// in the order of `current`, emptied trash folders, free space, the operating system, then the
/// additional reports.
std::vector<Change> compare(const Snapshot& previous, const Snapshot& current);

/// One child folder changed by `childFolderThreshold` or more. Never for the trash.
bool hasSignificantChildChange(const FolderSize& before, const FolderSize& after);

/// The total stayed below `folderThreshold` while a large child moved: the contents changed, not
/// the size.
bool isContentsChange(const FolderSize& before, const FolderSize& after);

} // namespace tidemark::DiffEngine
