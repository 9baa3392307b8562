#include "app/preferences/JsonPreferences.h"

#include "app/preferences/PreferenceKeys.h"
#include "app/preferences/SettingsDocument.h"
#include "core/base/CanonicalPath.h"
#include "core/base/Files.h"
#include "core/base/Text.h"

#include <array>
#include <cerrno>
#include <ctime>

#include <unistd.h>

namespace tidemark {

namespace {

constexpr std::size_t largestFile = std::size_t{16} * 1024 * 1024;

/// "2026-11-21T10.00.00Z": no colons, which some file systems refuse.
std::string fileTime(Date date) {
    const auto seconds = static_cast<std::time_t>(date.secondsSince1970());
    std::tm parts{};
    ::gmtime_r(&seconds, &parts);
    std::array<char, 32> text{};
    std::strftime(text.data(), text.size(), "%Y-%m-%dT%H.%M.%SZ", &parts);
    return text.data();
}

std::filesystem::path unusedName(const std::filesystem::path& wanted) {
    std::filesystem::path name = wanted;
    for (int number = 2; fileExists(name); ++number)
        name = wanted.native() + "-" + std::to_string(number);
    return name;
}

void requireKnownVersion(const SettingsDocument& settings, const std::filesystem::path& file) {
    if (const auto version = settings.foreignVersion())
        throw FileError(file, "is of version " + *version + ", which this release can't read",
                        EILSEQ);
}

} // namespace

JsonPreferences::JsonPreferences(const std::filesystem::path& file, Opening opening, Clock& clock,
                                 FolderGuard guard)
    : path(canonicalPath(file)), copy(path.native() + ".bak"), purpose(opening),
      guard(std::move(guard)), document(std::make_unique<SettingsDocument>()),
      writable(opening == Opening::toWrite) {
    try {
        load(clock);
    } catch (const FileError& error) {
        writable = false;
        const std::string held = takeCopy() ? "a copy of them is used" : "the defaults are used";
        const char* changes = isReadOnly() ? "" : " and changes are lost when Tidemark quits";
        loadProblem = "The settings can’t be read, so " + held + changes + ": " + error.what();
    }
}

JsonPreferences::~JsonPreferences() = default;

void JsonPreferences::load(Clock& clock) {
    if (!fileExists(path))
        return;
    const std::string bytes = readFile(path, largestFile);
    if (auto settings = SettingsDocument::parsed(bytes)) {
        requireKnownVersion(*settings, path);
        *document = *std::move(settings);
        keepCopy(bytes);
        return;
    }
    if (isReadOnly()) {
        loadProblem = takeCopy() ? "The settings are damaged, so a copy of them is used."
                                 : "The settings are damaged, so the defaults are used.";
        return;
    }
    const std::string aside = textFromBytes(setAside(clock).native());
    const bool hasCopy = takeCopy();
    // Saves even without a copy: otherwise there would be no file, and nothing would show that the
    // settings were lost.
    save();
    loadProblem = "The settings were damaged and have been set aside as " + aside
                  + (hasCopy ? "; a copy of them is used." : "; the defaults are used.");
}

std::filesystem::path JsonPreferences::setAside(Clock& clock) const {
    guard.require();
    const auto aside = unusedName(path.native() + ".damaged-" + fileTime(clock.now()));
    if (::rename(path.c_str(), aside.c_str()) != 0)
        throw FileError::ofSystem(path, "is damaged and could not be renamed", errno);
    return aside;
}

bool JsonPreferences::takeCopy() {
    try {
        if (auto settings = fileExists(copy) ? SettingsDocument::parsed(readFile(copy, largestFile))
                                             : std::nullopt) {
            requireKnownVersion(*settings, copy);
            *document = *std::move(settings);
            return true;
        }
    } catch (const FileError&) {
        // Continue without a copy.
    }
    document->set(preferenceKeys::settingsLost.name, true);
    return false;
}

bool JsonPreferences::isLost() const {
    return tidemark::read(*this, preferenceKeys::settingsLost);
}

/// Removes the copy when it can't be updated: an old copy would restore settings that the user has
/// changed since.
void JsonPreferences::keepCopy(const std::string& bytes) const {
    if (!writable)
        return;
    // If the folder may belong to another process by now, this throws, and the copy is not changed.
    guard.require();
    try {
        if (!fileExists(copy) || readFile(copy, largestFile) != bytes)
            replaceFile(copy, bytes, guard);
    } catch (const FileError&) {
        ::unlink(copy.c_str());
    }
}

std::optional<bool> JsonPreferences::boolean(std::string_view key) const {
    return document->value<bool>(key);
}
std::optional<std::int64_t> JsonPreferences::integer(std::string_view key) const {
    return document->value<std::int64_t>(key);
}
std::optional<std::string> JsonPreferences::text(std::string_view key) const {
    return document->value<std::string>(key);
}
std::optional<std::vector<std::string>> JsonPreferences::texts(std::string_view key) const {
    return document->value<std::vector<std::string>>(key);
}
std::optional<Data> JsonPreferences::data(std::string_view key) const {
    return document->value<Data>(key);
}
std::optional<std::map<std::string, Data>> JsonPreferences::dataTable(std::string_view key) const {
    return document->value<std::map<std::string, Data>>(key);
}

bool JsonPreferences::storeOrKeep(std::string_view key, PreferenceValue value) {
    SettingsDocument next = *document;
    next.set(key, value);
    // Nothing to write if it is on disk already. A value that could not be written before is tried
    // again.
    if (next == *document && !saveProblem && writable)
        return true;
    *document = std::move(next);
    return save();
}

bool JsonPreferences::removeOrForget(std::string_view key) {
    // A removal that could not be written before is tried again.
    const bool isGone = !document->remove(key) && !saveProblem;
    return isGone || save();
}

bool JsonPreferences::storeOrRefuse(std::string_view key, PreferenceValue value) {
    const SettingsDocument before = *document;
    if (storeOrKeep(key, std::move(value)))
        return true;
    *document = before;
    return false;
}

bool JsonPreferences::save() {
    isSaved = false;
    if (!writable)
        return false;
    try {
        createPrivateFolders(path.parent_path(), guard);
        const std::string bytes = document->bytes();
        replaceFile(path, bytes, guard);
        saveProblem.reset();
        isSaved = true;
        keepCopy(bytes);
    } catch (const Error& error) {
        saveProblem = "The settings can’t be saved: " + std::string(error.what());
    }
    return isSaved;
}

std::optional<std::string> JsonPreferences::problem() const {
    return saveProblem ? saveProblem : loadProblem;
}

} // namespace tidemark
