#pragma once

#include "core/base/PropertyList.h"
#include "core/records/BackgroundItem.h"

#include <array>
#include <expected>
#include <map>
#include <string>
#include <string_view>
#include <utility>

/// Makes the stored record of a service definition. Definitions can contain secrets, so for most
/// keys only a digest of the value is kept.
namespace tidemark::BackgroundDefinition {

/// Why no item was made from a definition on disk.
enum class Failure {
    /// It can't be read, is not in the format of a definition, or has no label.
    unreadable,
    /// It is well formed but defines nothing.
    empty,
    /// It is a table of jobs that has none at present. There is no item, but the path is still
    /// compared, so that a job that is added later is reported as new.
    noJob,
};

/// An item, or why there is none.
using Result = std::expected<BackgroundItem, Failure>;

/// The definition keys that are compared, as named in launchd.plist(5).
inline constexpr auto keys = std::to_array<std::string_view>({
    "Program",
    "ProgramArguments",
    "RunAtLoad",
    "KeepAlive",
    "StartInterval",
    "StartCalendarInterval",
    "WatchPaths",
    "QueueDirectories",
    "EnvironmentVariables",
    "WorkingDirectory",
    "UserName",
    "GroupName",
    "ProcessType",
    "Disabled",
    "Sockets",
    "MachServices",
    "StandardOutPath",
    "StandardErrorPath",
    "ThrottleInterval",
    "LimitLoadToSessionType",
});

struct Label {
    std::string_view key;
    std::string_view text;
};

/// Labels of the settings that are stored and may be shown with their values.
inline constexpr auto labels = std::to_array<Label>({
    {"RunAtLoad", "Starts when loaded"},
    {"KeepAlive", "Keep running"},
    {"Disabled", "Disabled in definition"},
    {"StartInterval", "Run interval (seconds)"},
    {"ThrottleInterval", "Minimum restart interval (seconds)"},
});

/// Labels of the other compared keys. Only a digest of each value is stored, and of the program
/// also its path.
inline constexpr auto furtherLabels = std::to_array<Label>({
    {"Program", "Executable"},
    {"ProgramArguments", "Launch arguments"},
    {"EnvironmentVariables", "Environment settings"},
    {"StartCalendarInterval", "Calendar schedule"},
    {"WatchPaths", "Watched paths"},
});

/// The settings that may be shown, by key: "Yes", "No", "Conditional" or a number.
std::map<std::string, std::string> safeSettings(const PropertyList::Dictionary& definition);

/// A SHA-256 digest for each compared key that has a value. Keys that default to false always have
/// one, so that adding the default to the file is not a change.
std::map<std::string, std::string> fingerprints(const PropertyList::Dictionary& definition);

/// The item that a definition describes, without `kind` and association, which are not its own. Its
/// identifier is the `Label`. `program` is stored as it is: the path of a program and no argument.
Result item(const PropertyList::Dictionary& definition, std::string path,
            const std::string* program);
/// As above, with the program that the key `Program` names.
Result item(const PropertyList::Dictionary& definition, std::string path);

} // namespace tidemark::BackgroundDefinition
