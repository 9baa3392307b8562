#pragma once

#include "platform/linux/FileFinder.h"

#include <memory>

namespace tidemark {

/// The files in the user's folders for documents, and those in the desktop's list of recently used
/// files; Linux has no index of all files. A `FileFinder` finds them on a thread of low priority.
/// Main thread only.
class FolderFileIndex final : public FileIndex {
public:
    /// Where to look; made on that thread, since it reads a file.
    struct Places {
        /// Folders for documents.
        std::vector<std::filesystem::path> documents;
        std::filesystem::path downloads;
        std::filesystem::path recentlyUsed;

        /// Those of the user (https://www.freedesktop.org/wiki/Software/xdg-user-dirs).
        static Places current();
    };
    struct Setup {
        std::function<Places()> places = &Places::current;
        /// Whether the service with the metadata of the desktop runs. Called on any thread.
        std::function<bool()> hasMetadata = [] { return false; };
        FileFinder::Delays delays{};
    };

    explicit FolderFileIndex(Setup setup) : uses(std::move(setup)) {}
    /// Does not wait for the thread, which a server that does not respond may hold up.
    ~FolderFileIndex() override { FolderFileIndex::stop(); }

    bool start(Scope scope, Found found) override;
    void stop() override;

private:
    class Run;

    const Setup uses;
    std::shared_ptr<Run> run;
};

} // namespace tidemark
