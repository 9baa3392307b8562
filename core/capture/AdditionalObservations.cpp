#include "core/capture/AdditionalObservations.h"

#include "core/base/Digest.h"
#include "core/base/FileDescriptor.h"
#include "core/base/Text.h"
#include "core/capture/FolderListing.h"
#include "core/capture/Inventory.h"
#include "core/system/StorageFileMetadata.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <expected>
#include <iterator>
#include <optional>
#include <ranges>

#include <fcntl.h>
#include <sys/stat.h>

namespace tidemark::AdditionalObservations {

namespace {

using Kind = FolderEntry::Kind;

struct Named {
    std::string_view key;
    std::string_view text;
};

constexpr auto reportTypes = std::to_array<Named>({
    {"crash", "Crash report"},
    {"ips", "Diagnostic report"},
    {"hang", "Hang report"},
    {"spin", "Sample report"},
    {"diag", "Diagnostic report"},
});
constexpr std::string_view otherReportType = "Diagnostic report";
constexpr auto reportExtensions = std::to_array<std::string_view>({"ips", "crash", "hang", "spin"});

constexpr auto configurationLabels = std::to_array<Named>({
    {".zshrc", "Zsh configuration"},
    {".zprofile", "Zsh login configuration"},
    {".bashrc", "Bash configuration"},
    {".bash_profile", "Bash login configuration"},
    {".gitconfig", "Git configuration"},
    {"Brewfile", "Homebrew bundle configuration"},
    {".profile", "Login shell configuration"},
    {".bash_login", "Bash login configuration"},
    {".zshenv", "Zsh environment"},
    {"config.fish", "Fish configuration"},
    {".pam_environment", "Login environment"},
});

template <std::size_t size>
std::string_view textOf(const std::array<Named, size>& table, std::string_view key,
                        std::string_view otherwise) {
    for (const auto& row : table)
        if (row.key == key)
            return row.text;
    return otherwise;
}

/// The error when an entry can't be read, which makes the whole listing incomplete.
struct Incomplete {};
using Observed = std::expected<std::optional<ObservedMetadata>, Incomplete>;
using Inspect = Observed (*)(const FolderEntry&, const ReadingBudget&);

Observed formula(const FolderEntry& entry, const ReadingBudget& budget) {
    if (entry.kind != Kind::folder)
        return std::nullopt;
    const auto listing = FolderListing::open(entry, FolderListing::Hidden::listed, budget);
    // A formula whose folder was just removed is not installed. After any other failure its
    // versions are not known.
    if (!listing && listing.error() == FolderListing::Failure::missing)
        return std::nullopt;
    if (!listing)
        return std::unexpected(Incomplete{});
    std::string versions;
    for (const auto& name : listing->names()) {
        const auto kind = listing->entry(name).kind;
        if (kind == Kind::unknown || budget.isSpent())
            return std::unexpected(Incomplete{});
        if (kind == Kind::folder)
            versions += (versions.empty() ? "" : ", ") + textFromBytes(name);
        if (versions.size() > longestText)
            return std::unexpected(Incomplete{});
    }
    if (versions.empty())
        return std::nullopt;
    ObservedMetadata metadata;
    metadata.kind = ObservedMetadata::Kind::homebrew;
    metadata.path = entry.pathText();
    metadata.name = textFromBytes(entry.name());
    metadata.value = std::move(versions);
    return metadata;
}

/// True when `text` begins with a separator and a date, such as "-2024-05-01" or "_2024_05_01".
bool beginsWithDate(std::string_view text) {
    constexpr std::string_view shape = "-0000-00-00";
    if (text.size() < shape.size())
        return false;
    for (std::size_t i = 0; i < shape.size(); ++i) {
        const bool fits =
            shape[i] == '-' ? text[i] == '-' || text[i] == '_' : text[i] >= '0' && text[i] <= '9';
        if (!fits)
            return false;
    }
    return true;
}

/// A report is named after the application, followed by a date.
std::optional<std::string> inferredApplication(std::string_view stem) {
    std::size_t place = 0;
    while (place < stem.size() && !beginsWithDate(stem.substr(place)))
        ++place;
    if (place == 0 || place == stem.size())
        return std::nullopt;
    return std::string(stem.substr(0, place));
}

/// The program that systemd-coredump(8) names in "core.PROGRAM.USER.BOOT.PROCESS.TIME", perhaps
/// with the extension of a compressed file; absent for any other name.
std::optional<std::string> dumpedProgram(std::string_view name) {
    constexpr std::string_view start = "core.";
    constexpr std::size_t bootDigits = 32;
    if (!name.starts_with(start))
        return std::nullopt;
    name.remove_prefix(start.size());
    std::vector<std::string_view> parts;
    for (const auto& part : std::views::split(name, '.'))
        parts.emplace_back(part.begin(), part.end());
    // The name of the program may have dots itself.
    const auto boot = std::ranges::find_if(
        parts, [](std::string_view part) { return part.size() == bootDigits; });
    if (boot - parts.begin() < 2 || parts.end() - boot < 3)
        return std::nullopt;
    const auto user = std::prev(boot);
    return std::string(name.substr(0, static_cast<std::size_t>(user->data() - name.data()) - 1));
}

/// The report of a memory dump, from its name alone.
std::optional<ObservedMetadata> coreDump(const FolderEntry& entry) {
    const std::string name = textFromBytes(entry.name());
    auto program = dumpedProgram(name);
    if (!program)
        return std::nullopt;
    ObservedMetadata metadata;
    metadata.kind = ObservedMetadata::Kind::diagnostic;
    metadata.path = entry.pathText();
    metadata.name = name;
    metadata.reportType = textOf(reportTypes, "crash", otherReportType);
    metadata.inferredApplication = std::move(program);
    metadata.value = "core";
    return metadata;
}

Observed diagnostic(const FolderEntry& entry, const ReadingBudget&) {
    if (entry.kind != Kind::regular)
        return std::nullopt;
    if (auto dump = coreDump(entry))
        return dump;
    const std::string extension = asciiLowercased(entry.extension());
    const bool known = std::ranges::find(reportExtensions, extension) != reportExtensions.end();
    if (!known)
        return std::nullopt;
    ObservedMetadata metadata;
    metadata.kind = ObservedMetadata::Kind::diagnostic;
    metadata.path = entry.pathText();
    metadata.name = textFromBytes(entry.name());
    metadata.reportType = textOf(reportTypes, extension, otherReportType);
    metadata.inferredApplication = inferredApplication(textFromBytes(entry.path.stem().native()));
    metadata.value = extension;
    return metadata;
}

std::expected<std::vector<ObservedMetadata>, Incomplete>
inspect(const std::filesystem::path& folder, Inspect item, const ReadingBudget& budget) {
    if (budget.isSpent())
        return std::unexpected(Incomplete{});
    const auto listing = FolderListing::open(folder, FolderListing::Hidden::skipped, budget);
    if (!listing && listing.error() == FolderListing::Failure::missing)
        return {};
    if (!listing || listing->names().size() > mostEntries)
        return std::unexpected(Incomplete{});
    std::vector<ObservedMetadata> items;
    for (const auto& name : listing->names()) {
        if (budget.isSpent())
            return std::unexpected(Incomplete{});
        const auto entry = listing->entry(name);
        if (entry.kind == Kind::link)
            continue;
        if (entry.kind == Kind::unknown)
            return std::unexpected(Incomplete{});
        auto observed = item(entry, budget);
        if (!observed)
            return std::unexpected(observed.error());
        if (*observed)
            items.push_back(**std::move(observed));
    }
    std::ranges::sort(items, {}, &ObservedMetadata::path);
    return items;
}

MetadataReport report(const std::filesystem::path& folder, Inspect item,
                      const ReadingBudget& budget) {
    MetadataReport result;
    result.scope = textFromBytes(folder.native());
    if (auto items = inspect(folder, item, budget)) {
        result.items.emplace(*std::move(items));
        result.complete = true;
    } else {
        result.issue = "Additional history: could not completely inspect " + result.scope
                       + ". No comparison was made.";
    }
    return result;
}

/// False for a placeholder whose contents are not on this disk: reading it would download them.
bool isLocalRegularFile(const StorageFileMetadata::Read& status) {
    return status && status->isRegularFile() && !status->isCloudOnly;
}

bool isSameVersion(const FileVersion& before, const FileVersion& after) {
    return before.bytes == after.bytes && before.modified == after.modified;
}

constexpr std::string_view notRegular = "Selected file is not a local regular file: ";
constexpr std::string_view notOpened = "Selected file could not be read: ";
constexpr std::string_view tooLarge = "Selected file is not a local regular file under 1 MB: ";
constexpr std::string_view readFailed = "Selected file read failed: ";
constexpr std::string_view changed = "Selected file changed while being read: ";

struct Fingerprint {
    std::string digest;
    std::int64_t bytes;
};

/// The digest of the content of `file`, or the text of an issue, to which the caller appends the
/// path.
std::expected<std::string, std::string_view> digestOf(const FileDescriptor& file,
                                                      const ReadingBudget& budget) {
    Sha256 digest;
    std::array<char, 1 << 16> buffer;
    std::size_t total = 0;
    while (!budget.isSpent()) {
        const ssize_t count = ::read(file.get(), buffer.data(), buffer.size());
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            return std::unexpected(readFailed);
        if (count == 0)
            return digest.finish();
        total += static_cast<std::size_t>(count);
        if (total > largestConfiguration)
            return std::unexpected(tooLarge);
        digest.update({buffer.data(), static_cast<std::size_t>(count)});
    }
    return std::unexpected(readFailed);
}

/// Empty when there is no such file.
std::expected<std::optional<Fingerprint>, std::string_view>
fingerprint(const std::filesystem::path& path, const ReadingBudget& budget) {
    const auto status = StorageFileMetadata::readEntry(AT_FDCWD, path.c_str());
    if (!status && status.error() == ENOENT)
        return std::nullopt;
    if (!isLocalRegularFile(status))
        return std::unexpected(notRegular);
    // Another file may have replaced this one since its status was read. So the flags prevent
    // following a link or waiting for a pipe, and the status is checked again.
    const FileDescriptor file(::open(path.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
    if (!file)
        return std::unexpected(notOpened);
    const auto before = StorageFileMetadata::readOpen(file.get());
    if (!isLocalRegularFile(before)
        || static_cast<std::size_t>(before->bytes()) > largestConfiguration)
        return std::unexpected(tooLarge);
    auto digest = digestOf(file, budget);
    if (!digest)
        return std::unexpected(digest.error());
    const auto after = StorageFileMetadata::readOpen(file.get());
    if (!after || !isSameVersion(before->version, after->version))
        return std::unexpected(changed);
    return Fingerprint{*std::move(digest), before->bytes()};
}

MetadataReport configuration(const std::filesystem::path& path, const ReadingBudget& budget) {
    MetadataReport result;
    result.scope = textFromBytes(path.native());
    auto found = fingerprint(path, budget);
    if (!found) {
        result.issue = std::string(found.error()) + result.scope;
        return result;
    }
    result.complete = true;
    if (!*found)
        return result;
    ObservedMetadata metadata;
    metadata.kind = ObservedMetadata::Kind::configuration;
    metadata.path = result.scope;
    metadata.name = configurationLabel(path);
    metadata.bytes = (*found)->bytes;
    metadata.value = std::move((*found)->digest);
    result.items.emplace({std::move(metadata)});
    return result;
}

} // namespace

std::string configurationLabel(const std::filesystem::path& path) {
    const std::string name = textFromBytes(path.filename().native());
    if (name == "config" && path.parent_path().filename() == ".ssh")
        return "SSH configuration";
    return std::string(textOf(configurationLabels, name, name));
}

std::vector<MetadataReport> collect(bool homebrew, bool diagnostics,
                                    const std::vector<std::filesystem::path>& configurationPaths,
                                    const AdditionalPlaces& places, Clock& clock,
                                    const std::stop_token& stop) {
    const auto budget = [&] { return ReadingBudget(secondsPerSource, clock, stop); };
    std::vector<MetadataReport> reports;
    if (homebrew)
        for (const auto& cellar : places.cellars)
            reports.push_back(report(cellar, formula, budget()));
    if (diagnostics)
        for (const auto& folder : places.diagnostics)
            reports.push_back(report(folder, diagnostic, budget()));
    for (const auto& path : configurationPaths)
        reports.push_back(configuration(path, budget()));
    return reports;
}

} // namespace tidemark::AdditionalObservations
