#include "app/preferences/JsonPreferences.h"

#include "app/preferences/PreferenceKeys.h"
#include "core/base/Base64.h"
#include "core/base/CanonicalPath.h"
#include "core/base/Files.h"
#include "core/base/Text.h"

#include <array>
#include <cerrno>
#include <ctime>

#include <nlohmann/json.hpp>
#include <unistd.h>

namespace tidemark {

namespace {

using Json = nlohmann::json;

constexpr std::size_t largestFile = std::size_t{16} * 1024 * 1024;
/// A document nested more deeply is damaged or hostile, and writing it could overflow the stack.
constexpr int deepestNesting = 64;
constexpr const char* versionKey = "schemaVersion";

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

/// Absent when `bytes` are not a JSON object.
std::optional<Json> parsed(const std::string& bytes) {
    bool tooDeep = false;
    const auto shallow = [&](int depth, Json::parse_event_t, Json&) {
        tooDeep = tooDeep || depth > deepestNesting;
        return !tooDeep;
    };
    Json root = Json::parse(bytes, shallow, false);
    if (tooDeep || !root.is_object())
        return std::nullopt;
    return root;
}

template <class T>
std::optional<T> converted(const Json& value);

template <>
std::optional<bool> converted(const Json& value) {
    return value.is_boolean() ? std::optional(value.get<bool>()) : std::nullopt;
}
template <>
std::optional<std::int64_t> converted(const Json& value) {
    if (!value.is_number_integer())
        return std::nullopt;
    if (value.is_number_unsigned() && value.get<std::uint64_t>() > INT64_MAX)
        return std::nullopt;
    return value.get<std::int64_t>();
}
template <>
std::optional<std::string> converted(const Json& value) {
    return value.is_string() ? std::optional(value.get<std::string>()) : std::nullopt;
}
template <>
std::optional<Data> converted(const Json& value) {
    const auto bytes = value.is_string() ? base64Decoded(value.get<std::string>()) : std::nullopt;
    return bytes ? std::optional(Data{*bytes}) : std::nullopt;
}
template <>
std::optional<std::vector<std::string>> converted(const Json& value) {
    if (!value.is_array())
        return std::nullopt;
    std::vector<std::string> texts;
    for (const auto& element : value) {
        if (!element.is_string())
            return std::nullopt;
        texts.push_back(element.get<std::string>());
    }
    return texts;
}
template <>
std::optional<std::map<std::string, Data>> converted(const Json& value) {
    if (!value.is_object())
        return std::nullopt;
    std::map<std::string, Data> table;
    for (const auto& [key, element] : value.items()) {
        auto data = converted<Data>(element);
        if (!data)
            return std::nullopt;
        table.emplace(key, *std::move(data));
    }
    return table;
}

Json stored(bool value) {
    return value;
}
Json stored(std::int64_t value) {
    return value;
}
Json stored(const std::string& value) {
    return value;
}
Json stored(const std::vector<std::string>& value) {
    return value;
}
Json stored(const Data& value) {
    return base64Encoded(value.bytes);
}
Json stored(const std::map<std::string, Data>& table) {
    Json object = Json::object();
    for (const auto& [key, data] : table)
        object[key] = stored(data);
    return object;
}

/// Settings without a version are of the first one. Those of another release may mean something
/// else by the same keys.
void requireKnownVersion(const Json& root, const std::filesystem::path& file) {
    const auto found = root.find(versionKey);
    if (found != root.end() && *found != 1)
        throw FileError(file, "is of version " + found->dump() + ", which this release can't read",
                        EILSEQ);
}

} // namespace

struct JsonPreferences::Document {
    Json root = Json::object();
};

JsonPreferences::JsonPreferences(const std::filesystem::path& file, Opening opening, Clock& clock,
                                 FolderGuard guard)
    : path(canonicalPath(file)), copy(path.native() + ".bak"), purpose(opening),
      guard(std::move(guard)), document(std::make_unique<Document>()),
      writable(opening == Opening::toWrite) {
    try {
        load(clock);
    } catch (const FileError& error) {
        writable = false;
        const std::string held = takeCopy() ? "a copy of them holds" : "the defaults hold";
        const char* changes = isReadOnly() ? "" : " and changes are lost when Tidemark quits";
        loadProblem = "The settings can’t be read, so " + held + changes + ": " + error.what();
    }
}

JsonPreferences::~JsonPreferences() = default;

void JsonPreferences::load(Clock& clock) {
    if (!fileExists(path))
        return;
    const std::string bytes = readFile(path, largestFile);
    if (auto root = parsed(bytes)) {
        requireKnownVersion(*root, path);
        document->root = *std::move(root);
        keepCopy(bytes);
        return;
    }
    if (isReadOnly()) {
        loadProblem = takeCopy() ? "The settings are damaged, so a copy of them holds."
                                 : "The settings are damaged, so the defaults hold.";
        return;
    }
    const std::string aside = textFromBytes(setAside(clock).native());
    const bool hasCopy = takeCopy();
    // Saves even without a copy: otherwise there would be no file, and nothing would show that the
    // settings were lost.
    save();
    loadProblem = "The settings were damaged and have been set aside as " + aside
                  + (hasCopy ? "; a copy of them holds." : "; the defaults hold.");
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
        if (auto root = fileExists(copy) ? parsed(readFile(copy, largestFile)) : std::nullopt) {
            requireKnownVersion(*root, copy);
            document->root = *std::move(root);
            return true;
        }
    } catch (const FileError&) {
        // Continue without a copy.
    }
    document->root[std::string(preferenceKeys::settingsLost.name)] = true;
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
    // Nothing is removed either when the folder may belong to another process.
    guard.require();
    try {
        if (!fileExists(copy) || readFile(copy, largestFile) != bytes)
            replaceFile(copy, bytes, guard);
    } catch (const FileError&) {
        ::unlink(copy.c_str());
    }
}

template <class T>
std::optional<T> JsonPreferences::read(std::string_view key) const {
    const auto found = document->root.find(key);
    return found == document->root.end() ? std::nullopt : converted<T>(*found);
}

std::optional<bool> JsonPreferences::boolean(std::string_view key) const {
    return read<bool>(key);
}
std::optional<std::int64_t> JsonPreferences::integer(std::string_view key) const {
    return read<std::int64_t>(key);
}
std::optional<std::string> JsonPreferences::text(std::string_view key) const {
    return read<std::string>(key);
}
std::optional<std::vector<std::string>> JsonPreferences::texts(std::string_view key) const {
    return read<std::vector<std::string>>(key);
}
std::optional<Data> JsonPreferences::data(std::string_view key) const {
    return read<Data>(key);
}
std::optional<std::map<std::string, Data>> JsonPreferences::dataTable(std::string_view key) const {
    return read<std::map<std::string, Data>>(key);
}

bool JsonPreferences::storeOrKeep(std::string_view key, PreferenceValue value) {
    auto next = std::visit([](const auto& held) { return stored(held); }, value);
    auto& present = document->root[std::string(key)];
    // Nothing to write if it is on disk already. A value that could not be written before is tried
    // again.
    if (present == next && !saveProblem && writable)
        return true;
    present = std::move(next);
    return save();
}

bool JsonPreferences::removeOrForget(std::string_view key) {
    const auto found = document->root.find(key);
    if (found == document->root.end())
        return true;
    document->root.erase(found);
    return save();
}

bool JsonPreferences::storeOrRefuse(std::string_view key, PreferenceValue value) {
    const std::string name(key);
    const auto found = document->root.find(name);
    // Any value, also of a type that this release does not support.
    const auto before = found == document->root.end() ? std::nullopt : std::optional<Json>(*found);
    if (storeOrKeep(key, std::move(value)))
        return true;
    if (before)
        document->root[name] = *before;
    else
        document->root.erase(name);
    return false;
}

bool JsonPreferences::save() {
    isSaved = false;
    if (!writable)
        return false;
    try {
        createPrivateFolders(path.parent_path(), guard);
        const auto bytes =
            document->root.dump(4, ' ', false, Json::error_handler_t::replace) + "\n";
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
