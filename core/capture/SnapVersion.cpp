#include "core/capture/SnapVersion.h"

#include "core/base/Files.h"
#include "core/base/Text.h"

#include <algorithm>

namespace tidemark::SnapVersion {

namespace {

namespace fs = std::filesystem;

/// The folders in which Debian and Fedora mount snaps.
constexpr const char* folders[] = {"/snap", "/var/lib/snapd/snap"};
constexpr std::size_t largestDescription = std::size_t{1} << 20;
constexpr std::string_view key = "version:";

bool isName(std::string_view text) {
    return std::ranges::all_of(text, [](char character) {
        return (character >= 'a' && character <= 'z') || (character >= '0' && character <= '9')
               || character == '-' || character == '_';
    });
}

/// A text value of YAML, with or without quotes, as plain text.
std::string plain(std::string_view value) {
    value = trimmed(value);
    const char quote = value.empty() ? '\0' : value.front();
    if (quote == '"' || quote == '\'') {
        value.remove_prefix(1);
        return std::string(value.substr(0, value.find(quote)));
    }
    return std::string(trimmed(value.substr(0, value.find(" #"))));
}

std::optional<Version> readIn(const MachineFiles& machine, const fs::path& snap) {
    // `current` is a link to the folder of a revision, which must be in the same folder as the
    // link.
    const fs::path revision = machine.canonical(snap / "current");
    const fs::path description = revision / "meta/snap.yaml";
    if (revision.parent_path() != machine.canonical(snap)
        || machine.canonical(description) != description)
        return std::nullopt;
    try {
        auto version = versionIn(machine.read(description, largestDescription));
        if (!version)
            return std::nullopt;
        return Version{*std::move(version), textFromBytes(revision.filename().native())};
    } catch (const FileError&) {
        return std::nullopt;
    }
}

} // namespace

std::optional<Version> read(const MachineFiles& machine, std::string_view instance) {
    if (!isName(instance))
        return std::nullopt;
    for (const char* folder : folders)
        if (auto found = readIn(machine, fs::path(folder) / instance))
            return found;
    return std::nullopt;
}

std::optional<std::string> versionIn(std::string_view yaml) {
    while (!yaml.empty()) {
        const std::string_view line = yaml.substr(0, yaml.find('\n'));
        yaml.remove_prefix(std::min(line.size() + 1, yaml.size()));
        if (line.starts_with(key))
            if (auto value = plain(line.substr(key.size())); !value.empty())
                return textFromBytes(value);
    }
    return std::nullopt;
}

} // namespace tidemark::SnapVersion
