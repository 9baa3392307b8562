#pragma once

#include "platform/linux/BusService.h"
#include "platform/linux/FileFinder.h"

#include <atomic>
#include <memory>
#include <optional>

namespace tidemark {

/// The files in the user's folders for documents, and those in the desktop's list of recently used
/// files; Linux has no index of all files. A `FileFinder` finds them on a thread of low priority.
/// Main thread only.
class FolderFileIndex final : public FileIndex {
public:
    /// Where files are looked for. `Setup::places` is called on the thread of the `FileFinder`,
    /// since `current` reads a file.
    struct Places {
        /// Folders for documents.
        std::vector<std::filesystem::path> documents;
        std::filesystem::path downloads;
        /// The desktop's list of recently used files.
        std::filesystem::path recentlyUsed;

        /// Those of the user (https://www.freedesktop.org/wiki/Software/xdg-user-dirs).
        static Places current();
    };
    struct Setup {
        std::function<Places()> places = &Places::current;
        /// The bus of the session; used from the first start on.
        std::function<MessageBus()> bus = &MessageBus::session;
        FileFinder::Delays delays{};
    };

    explicit FolderFileIndex(Setup setup) : uses(std::move(setup)) {}
    /// Does not wait for the thread, which a server that does not respond may hold up.
    ~FolderFileIndex() override { FolderFileIndex::stop(); }

    bool start(Scope scope, Found found) override;
    void stop() override;

private:
    class Run;

    void followMetadata();

    const Setup uses;
    /// The service with the metadata of the desktop.
    std::optional<BusService> metadata;
    /// Whether that service is running; also read on the thread of the `FileFinder`.
    const std::shared_ptr<std::atomic<bool>> hasMetadata =
        std::make_shared<std::atomic<bool>>(false);
    std::shared_ptr<Run> run;
};

} // namespace tidemark
