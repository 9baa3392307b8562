#pragma once

#include "app/preferences/Preferences.h"
#include "core/base/Clock.h"
#include "core/base/FolderGuard.h"

#include <filesystem>
#include <memory>

namespace tidemark {

class SettingsDocument;

/// Preferences in one JSON file, which is replaced as a whole, with mode 0600, at each change.
///
/// A second file, with ".bak" appended to the name, has the same content. When the first one is not
/// a JSON object, it is renamed with ".damaged-" and the time appended, and the second one is used
/// instead. If that can't be used either, the defaults are used, and the new file records that the
/// settings were lost. A file that can't be read or renamed is never written. Without the first
/// file there are no settings, so a user can reset them by removing it.
class JsonPreferences final : public Preferences {
public:
    /// `toRead` changes no file: for processes without the lock of the data folder.
    enum class Opening { toWrite, toRead };

    /// Reads the file, if it exists. A link at `file` is followed and kept. `guard` is the guard of
    /// the data folder, because only the process that holds its lock writes the settings; once it
    /// refuses, nothing is stored any more.
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
    /// The problem of the file when it was opened, as a sentence.
    const std::optional<std::string>& loadingProblem() const { return loadProblem; }
    bool isStored() const override { return isSaved; }

private:
    bool storeOrRefuse(std::string_view key, PreferenceValue value) override;
    bool storeOrKeep(std::string_view key, PreferenceValue value) override;
    bool removeOrForget(std::string_view key) override;
    void load(Clock& clock);
    std::filesystem::path setAside(Clock& clock) const;
    bool takeCopy();
    void keepCopy(const std::string& bytes) const;
    bool save();

    const std::filesystem::path path;
    const std::filesystem::path copy;
    const Opening purpose;
    const FolderGuard guard;
    std::unique_ptr<SettingsDocument> document;
    bool writable = true;
    bool isSaved = true;
    /// Set once, when the file is opened.
    std::optional<std::string> loadProblem;
    /// The problem of the last attempt to write.
    std::optional<std::string> saveProblem;
};

} // namespace tidemark
