#pragma once

#include "core/base/Error.h"
#include "core/memory/MemoryArchive.h"
#include "core/memory/MemoryPayloads.h"

#include <filesystem>
#include <mutex>
#include <set>
#include <string>

namespace tidemark {

/// Stores the memory archive: a document, and next to it the folder "memory-payloads" with the
/// contents of the clips in files of their own, so that the document stays small and a clip is
/// written only once. A document that can't be read is not overwritten. Thread-safe: one operation
/// runs at a time.
class MemoryHistoryStore {
public:
    class StoreError : public Error {
    public:
        enum class Kind {
            /// The document has a version that this release does not support.
            unsupportedVersion,
            /// `save` was called before a successful `load`.
            notReadable,
        };
        StoreError(Kind kind, const std::string& sentence) : Error(sentence), reason(kind) {}
        Kind kind() const { return reason; }

    private:
        Kind reason;
    };

    /// `url` is the document, "memory-history.json" in the data folder; `guard` is the guard of
    /// that folder.
    explicit MemoryHistoryStore(std::filesystem::path url, FolderGuard guard = {});

    /// The stored archive with the contents of its clips; empty when there is no document. Throws
    /// `FileError` or `StoreError`, also when the content of a single clip is missing. After that,
    /// `save` throws and no file is changed.
    MemoryArchive load();

    /// Writes the contents of new clips, then the document, then deletes contents that are no
    /// longer needed, so that a crash leaves a complete archive, at worst with unneeded files.
    /// Files get mode 0600, folders 0700. Throws `StoreError` before a successful `load`, else
    /// `FileError` and what the guard throws.
    void save(const MemoryArchive& archive);

    /// The file name for the content of a clip: a digest of its id, which reveals nothing about the
    /// clip.
    static std::string blobName(std::string_view id, std::string_view extension);

private:
    MemoryArchive read();
    Shared<MemoryRecord> withContents(const Shared<MemoryRecord>& record);
    Shared<MemoryRecord> withoutContents(const Shared<MemoryRecord>& record,
                                         std::set<std::string>& wanted) const;
    std::string fetch(const std::string& name);
    void keep(const std::string& name, std::string_view bytes, std::set<std::string>& wanted) const;

    const std::filesystem::path url;
    const FolderGuard guard;
    const MemoryPayloads payloads;
    std::mutex mutex;
    bool readable = false;
    /// Names of files that are known to be complete on disk.
    std::set<std::string> savedBlobs;
};

} // namespace tidemark
