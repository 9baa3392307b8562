#pragma once

#include "core/storage/StorageTraversal.h"

#include <functional>

namespace tidemark::test {

/// Walks to the end, calling `afterStep` after each step except the last.
inline StorageTraversal::Result
walkToEnd(StorageTraversal& walk, const std::function<void()>& afterStep = [] {}) {
    while (true) {
        if (auto result = walk.step())
            return *std::move(result);
        afterStep();
    }
}

inline StorageTraversal::Result walkToEnd(const std::filesystem::path& folder,
                                          std::int64_t entryLimit = 1'000'000) {
    auto walk = StorageTraversal::open(folder, entryLimit);
    return walk ? walkToEnd(*walk) : std::unexpected(walk.error());
}

/// The failure of a walk; absent after a success.
inline std::optional<StorageMeasurementFailure> failureOf(const StorageTraversal::Result& result) {
    return result ? std::nullopt : std::optional(result.error());
}

} // namespace tidemark::test
