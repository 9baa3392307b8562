#pragma once

#include "core/base/Error.h"
#include "core/memory/MemoryArchive.h"
#include "core/memory/MemoryPayloads.h"

#include <filesystem>
#include <mutex>
#include <set>
#include <string>

namespace tidemark {

/// Keeps the memory archive: a document, and beside it the folder "memory-payloads" with the
/// contents of the clips, so that the document stays small and a clip is written once. Any thread
/// may call it; one operation runs at a time. It never overwrites what it could not read.
class MemoryHistoryStore {
public:
    class StoreError : public Error {
    public:
        enum class Kind {
            /// The document is of a version that this release does not know.
            unsupportedVersion,
            /// A save without a load that succeeded.
            notReadable,
        };
        StoreError(Kind which, const std::string& sentence) : Error(sentence), reason(which) {}
        Kind kind() const { return reason; }

    private:
        Kind reason;
    };

    /// `url` is the document, "memory-history.json" in the data folder, whose guard is `guard`.
    explicit MemoryHistoryStore(std::filesystem::path url, FolderGuard guard = {});

    /// The stored archive with the contents of its clips; an empty one where there is none.
    /// Throws `FileError` or `StoreError`, also when the content of a single clip is missing: no
    /// file is changed then, and none later.
    MemoryArchive load();

    /// Writes the contents of clips that are new, then the document, then deletes the contents
    /// that it no longer needs: what a crash leaves is whole, with too many side files at worst.
    /// Files get mode 0600, the folders 0700. Throws `StoreError` before any `load`, else
    /// `FileError` and what the guard throws.
    void save(const MemoryArchive& archive);

    /// The name of a clip's side file: a digest of its id, which tells nothing of the clip.
    static std::string blobName(std::string_view id, std::string_view extension);

private:
    MemoryArchive read();
    Shared<MemoryRecord> withContents(const Shared<MemoryRecord>& record);
    Shared<MemoryRecord> withoutContents(const Shared<MemoryRecord>& record,
                                         std::set<std::string>& wanted) const;
    std::string fetch(const std::string& name);
    void keep(const std::string& name, std::string_view bytes, std::set<std::string>& wanted) const;

    const std::filesystem::path url;
    const FolderGuard permission;
    const MemoryPayloads payloads;
    std::mutex mutex;
    bool readable = false;
    /// Side files that are known to hold what they should.
    std::set<std::string> savedBlobs;
};

} // namespace tidemark
