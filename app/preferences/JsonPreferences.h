#pragma once

#include "app/preferences/Preferences.h"
#include "core/base/Clock.h"
#include "core/base/FolderGuard.h"

#include <filesystem>
#include <memory>

namespace tidemark {

/// Preferences in one JSON file, which is replaced whole, with mode 0600, at each change. Data is
/// kept as base64 text. What this release doesn't know in the file stays there.
///
/// A second file, with ".bak" behind the name, has the same content. When the first one turns out
/// to be no JSON object, it is renamed aside with ".damaged-" and the time behind its name, and the
/// second one is taken in its place; without that, the defaults hold, and the new file says that
/// the settings were lost. A file that can't be read, or can't be renamed, is never written.
/// Without the first file there are no settings: removing it is how a user starts afresh.
class JsonPreferences final : public Preferences {
public:
    /// To read leaves all files as they are: for who doesn't hold the lock of the data folder.
    enum class Opening { toWrite, toRead };

    /// Reads the file, if there is one. A link at `file` is followed, and stays.
    /// Nothing is stored any more once `guard` refuses, which is that of the data folder: who holds
    /// its lock is the one process that writes the settings.
    JsonPreferences(const std::filesystem::path& file, Opening opening,
                    Clock& clock = Clock::system(), FolderGuard guard = {});
    explicit JsonPreferences(const std::filesystem::path& file, Clock& clock = Clock::system())
        : JsonPreferences(file, Opening::toWrite, clock) {}
    ~JsonPreferences() override;

    std::optional<bool> boolean(std::string_view key) const override;
    std::optional<std::int64_t> integer(std::string_view key) const override;
    std::optional<std::string> text(std::string_view key) const override;
    std::optional<std::vector<std::string>> texts(std::string_view key) const override;
    std::optional<Data> data(std::string_view key) const override;
    std::optional<std::map<std::string, Data>> dataTable(std::string_view key) const override;

    bool isReadOnly() const override { return purpose == Opening::toRead; }
    bool isLost() const override;
    std::optional<std::string> problem() const override;
    /// What was wrong with the file when it was opened, as a sentence.
    const std::optional<std::string>& loadingProblem() const { return loadProblem; }
    bool isStored() const override { return isSaved; }

private:
    struct Document;

    bool storeOrRefuse(std::string_view key, PreferenceValue value) override;
    bool storeOrKeep(std::string_view key, PreferenceValue value) override;
    bool removeOrForget(std::string_view key) override;
    void load(Clock& clock);
    std::filesystem::path setAside(Clock& clock) const;
    bool takeCopy();
    void keepCopy(const std::string& bytes) const;
    bool save();
    /// Null when the key is absent or its value can't be read as `T`.
    template <class T>
    std::optional<T> read(std::string_view key) const;

    const std::filesystem::path path;
    const std::filesystem::path copy;
    const Opening purpose;
    const FolderGuard permission;
    std::unique_ptr<Document> document;
    bool writable = true;
    bool isSaved = true;
    /// Set for the whole run.
    std::optional<std::string> loadProblem;
    /// Of the last attempt to write.
    std::optional<std::string> saveProblem;
};

} // namespace tidemark
