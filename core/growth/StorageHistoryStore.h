#pragma once

#include "core/base/FolderGuard.h"
#include "core/growth/StorageHistory.h"

#include <filesystem>
#include <optional>
#include <string_view>

namespace tidemark {

/// Reads and writes the document of daily sizes, "storage-history.json" in the data folder. `save`
/// replaces the document without a check, so don't call it after the document could not be read.
/// Not thread-safe; only one process may write the file.
class StorageHistoryStore {
public:
    /// `guard` is the guard of the data folder.
    explicit StorageHistoryStore(std::filesystem::path url, FolderGuard guard = {})
        : url(std::move(url)), guard(std::move(guard)) {}

    /// The stored history; absent when there is no document. Throws `FileError` when it can't be
    /// read, is damaged or of a version that this release does not support. Changes nothing on
    /// disk.
    static std::optional<StorageHistory> read(const std::filesystem::path& document);
    /// The history in the bytes of a document, which the error names; throws like `read`.
    static StorageHistory decoded(std::string_view bytes, const std::filesystem::path& document);

    /// Replaces the document, with mode 0600 in folders of mode 0700. Throws `FileError` and what
    /// the guard throws; the old document is kept then.
    void save(const StorageHistory& history);

private:
    const std::filesystem::path url;
    const FolderGuard guard;
};

} // namespace tidemark
