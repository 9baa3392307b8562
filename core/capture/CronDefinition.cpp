#include "core/capture/CronDefinition.h"

#include "core/base/FileError.h"
#include "core/base/Text.h"
#include "core/capture/CommandText.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <expected>

#include <fcntl.h>

namespace tidemark::CronDefinition {

namespace {

using BackgroundDefinition::Failure;
using CommandText::Quoting;
using PropertyList::Array;
using PropertyList::Dictionary;

constexpr std::size_t largestTable = 1 << 20;
/// Minute, hour, day of the month, month, day of the week.
constexpr int timeFields = 5;
constexpr std::string_view whenStarted = "@reboot";
constexpr auto nicknames = std::to_array<std::string_view>({
    whenStarted,
    "@yearly",
    "@annually",
    "@monthly",
    "@weekly",
    "@daily",
    "@midnight",
    "@hourly",
});

bool isLetterOrDigit(char character) {
    return (character >= '0' && character <= '9') || (character >= 'a' && character <= 'z')
           || (character >= 'A' && character <= 'Z');
}

bool isTimeField(std::string_view text) {
    constexpr std::string_view signs = "*,-/~";
    return std::ranges::all_of(text, [&](char character) {
        return isLetterOrDigit(character) || signs.contains(character);
    });
}

/// "NAME = value", where NAME begins with a letter, "_" or a quote. No job begins with one of
/// these.
bool isAssignment(std::string_view line) {
    const char first = line.front();
    const bool isName = first == '"' || first == '\'' || first == '_'
                        || (isLetterOrDigit(first) && !(first >= '0' && first <= '9'));
    return isName && line.contains('=');
}

/// The contents of one table. Each member becomes one key of the definition.
struct Table {
    Array times;
    Array users;
    Array commands;
    Array environment;
    bool runsWhenStarted = false;
    std::optional<std::string> program;
};

/// Removes the first word of `rest` and returns it.
std::string_view takeWord(std::string_view& rest) {
    const std::string_view after = CommandText::afterFirstWord(rest, Quoting::none);
    const std::string_view word =
        trimmed(rest.substr(0, static_cast<std::size_t>(after.data() - rest.data())));
    rest = after;
    return word;
}

/// Adds the job in a line; returns false when the line is not a job.
bool readJob(std::string_view line, const MergedFolders& merged, Table& table) {
    std::string time;
    if (line.starts_with('@')) {
        time = takeWord(line);
        if (std::ranges::find(nicknames, time) == nicknames.end())
            return false;
    } else {
        for (int field = 0; field < timeFields; ++field) {
            const std::string_view word = takeWord(line);
            if (!isTimeField(word))
                return false;
            time += (field == 0 ? "" : " ") + std::string(word);
        }
    }
    const std::string_view user = takeWord(line);
    const auto program = CommandText::firstWord(line, Quoting::unit);
    // If the time or the user is missing, no word is left for the program.
    if (!program)
        return false;
    table.runsWhenStarted = table.runsWhenStarted || time == whenStarted;
    if (!table.program)
        table.program = textFromBytes(merged.canonical(*program));
    table.times.push_back({std::move(time)});
    table.users.push_back({textFromBytes(user)});
    table.commands.push_back({textFromBytes(merged.canonical(line))});
    return true;
}

std::expected<Table, Failure> parsed(std::string_view bytes, const MergedFolders& merged) {
    if (bytes.contains('\0'))
        return std::unexpected(Failure::unreadable);
    Table table;
    while (!bytes.empty()) {
        const std::string_view line = trimmed(bytes.substr(0, bytes.find('\n')));
        bytes.remove_prefix(std::min(bytes.find('\n'), bytes.size() - 1) + 1);
        if (line.empty() || line.starts_with('#'))
            continue;
        if (isAssignment(line))
            table.environment.push_back({textFromBytes(line)});
        else if (!readJob(line, merged, table))
            return std::unexpected(Failure::unreadable);
    }
    return table;
}

} // namespace

bool recognises(const FolderEntry& entry) {
    return std::ranges::all_of(entry.name(), [](char character) {
        return isLetterOrDigit(character) || character == '_' || character == '-';
    });
}

BackgroundDefinition::Result readTable(const FolderEntry& entry, const MergedFolders& merged) {
    std::string bytes;
    try {
        bytes = entry.read(largestTable);
    } catch (const FileError&) {
        return std::unexpected(Failure::unreadable);
    }
    auto table = parsed(bytes, merged);
    if (!table)
        return std::unexpected(table.error());
    if (table->commands.empty())
        return std::unexpected(Failure::noJob);
    Dictionary definition{{"Label", {textFromBytes(entry.name())}},
                          {"RunAtLoad", {table->runsWhenStarted}},
                          {"Program", {*table->program}},
                          {"ProgramArguments", {std::move(table->commands)}},
                          {"StartCalendarInterval", {std::move(table->times)}},
                          {"UserName", {std::move(table->users)}}};
    if (!table->environment.empty())
        definition["EnvironmentVariables"] = {std::move(table->environment)};
    return BackgroundDefinition::item(definition, entry.pathText());
}

BackgroundDefinition::Result readScript(const FolderEntry& entry, const MergedFolders&) {
    if (entry.kind != FolderEntry::Kind::regular)
        return std::unexpected(Failure::unreadable);
    const std::string folder = entry.path.parent_path().filename().native();
    // The interval is part of the name, as in "cron.daily".
    const std::string interval = folder.substr(folder.find('.') + 1);
    const Dictionary definition{
        {"Label", {textFromBytes(folder + "/" + entry.name())}},
        {"Program", {entry.pathText()}},
        {"StartCalendarInterval", {Array{{textFromBytes(interval)}}}},
        {"Disabled", {!entry.isExecutable}},
    };
    return BackgroundDefinition::item(definition, entry.pathText());
}

bool hasPersonalTables(const MachineFiles& machine) {
    const auto folder = machine.open(machine.canonical("/var/spool/cron"), O_RDONLY | O_DIRECTORY);
    return folder || folder.error() != ENOENT;
}

} // namespace tidemark::CronDefinition
