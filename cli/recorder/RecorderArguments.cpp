#include "cli/recorder/RecorderArguments.h"

#include "core/capture/CaptureSchedule.h"
#include "app/capture/FolderGrant.h"
#include "cli/recorder/HistoryTime.h"
#include "core/base/Error.h"
#include "core/presentation/HistoryTimeWindow.h"

#include <algorithm>
#include <functional>
#include <map>

#include <CLI/CLI.hpp>

namespace tidemark {

namespace {

using Command = RecorderArguments::Command;

template <class E>
std::vector<std::string> texts() {
    std::vector<std::string> all;
    for (const auto& entry : json::rawValues<E>)
        all.emplace_back(entry.text);
    return all;
}

template <class E>
std::vector<std::pair<std::string, E>> names() {
    std::vector<std::pair<std::string, E>> all;
    for (const auto& entry : json::rawValues<E>)
        all.emplace_back(entry.text, entry.value);
    return all;
}

/// One word each, beside the titles that are stored.
std::vector<std::pair<std::string, EventCategory>> categoryNames() {
    auto all = names<EventCategory>();
    all.insert(all.end(), {{"background", EventCategory::background},
                           {"system", EventCategory::system},
                           {"files", EventCategory::files}});
    return all;
}

/// Empty when the text is the name of a time window or a number of days.
std::string timeWindow(const std::string& text) {
    const auto window = json::fromRawValue<HistoryTimeWindow>(text);
    if ((window && *window != HistoryTimeWindow::custom) || historyTime::days(text))
        return {};
    return "\"" + text + "\" is none of day, threeDays, week, month, all or 1d to 365d";
}

std::string notEmpty(const std::string& path) {
    return path.empty() ? "a path can't be empty" : "";
}

class Builder {
public:
    Builder(CLI::App& line, RecorderArguments& target) : app(line), into(target) {}

    void addAll() {
        auto& capture =
            add(app, "capture", "Take a capture now and tell what changed", Command::capture);
        addSetup(capture);
        addJson(capture);
        addStanding();
        addHistory();
        addSnapshots();
        addExchange();
        addFolders();
        addSettings();
    }

private:
    CLI::App& add(CLI::App& parent, const std::string& name, const std::string& purpose,
                  Command command) {
        CLI::App& added = *parent.add_subcommand(name, purpose);
        if (!app.version().empty())
            added.set_version_flag("--version", app.version());
        // A group of commands is one itself when none of them is given.
        added.callback([&added, command, &target = into] {
            if (added.get_subcommands().empty())
                target.command = command;
        });
        return added;
    }
    void addJson(CLI::App& to) {
        to.add_flag("--json", into.json, "Print stored JSON instead of text");
    }
    CLI::Option* addSince(CLI::App& to) {
        return to.add_option("--since", into.view.since,
                             "How far back: 12h, 7d, 3w or a date (2026-05-31)");
    }
    void addSetup(CLI::App& to) {
        to.add_option("--setup", into.setup,
                      "Choose the folders to monitor before the first capture")
            ->check(CLI::IsMember({"recommended", "none"}));
    }

    /// A name out of a table, in any letter case.
    template <class E>
    CLI::Option* addChoice(CLI::App& to, const std::string& name, const std::string& purpose,
                           const std::vector<std::pair<std::string, E>>& names,
                           std::function<void(E)> take) {
        std::map<std::string, E> byName;
        std::vector<std::string> allowed;
        for (const auto& [text, value] : names) {
            byName.emplace(CLI::detail::to_lower(text), value);
            allowed.push_back(text);
        }
        return to
            .add_option_function<std::vector<std::string>>(
                name,
                [byName = std::move(byName),
                 take = std::move(take)](const std::vector<std::string>& given) {
                    for (const auto& text : given)
                        take(byName.at(CLI::detail::to_lower(text)));
                },
                purpose)
            ->check(CLI::IsMember(std::move(allowed), CLI::ignore_case))
            ->expected(1)
            ->take_all()
            ->type_name("NAME");
    }

    void addView(CLI::App& to) {
        auto* since = addSince(to);
        to.add_option("--window", into.view.window,
                      "The same as day, threeDays, week, month, all or a number of days (10d)")
            ->check(timeWindow)
            ->excludes(since);
        addChoice<EventCategory>(
            to, "--category", "Only events of this category; can be given several times",
            categoryNames(),
            [&target = into](EventCategory c) { target.view.categories.insert(c); });
        addChoice<WorkspaceDestination>(
            to, "--place", "What the sidebar shows under this name", names<WorkspaceDestination>(),
            [&target = into](WorkspaceDestination place) { target.view.place = place; });
        to.add_option("--search", into.view.search, "Only events with this text in them");
    }

    void addStanding() {
        addJson(add(app, "status", "Tell how recording stands", Command::status));
        add(app, "pause", "Pause all recording", Command::pause);
        add(app, "resume", "Resume recording with a new starting point", Command::resume);
        auto& schedule =
            add(app, "schedule", "Tell or set how often captures are due", Command::tellSchedule);
        schedule
            .add_option_function<std::string>(
                "VALUE", [&target = into](const std::string& value) { target.schedule = value; },
                "The new schedule")
            ->check(CLI::IsMember(texts<CaptureSchedule>()));
        schedule.callback([&target = into] {
            target.command = target.schedule.empty() ? Command::tellSchedule : Command::setSchedule;
        });
        addSince(
            add(app, "coverage", "Tell when and where nothing could be seen", Command::coverage));
    }

    void addHistory() {
        auto& timeline = add(app, "timeline", "Show the recorded history", Command::timeline);
        addView(timeline);
        timeline.add_option("--limit", into.limit, "Most events to show")
            ->check(CLI::Range(0, 1'000'000));
        timeline.add_flag("--counts", into.counts, "Tell how much each place holds instead");
        addJson(timeline);
        auto& search = add(app, "search", "Search the whole history", Command::search);
        search.add_option("TEXT", into.view.search, "What to look for")->required();
        addJson(search);
        addJson(add(app, "activity", "List what the machine reported live", Command::activity));
        addJson(add(app, "memory", "List files, downloads, launches and clips", Command::memory));
    }

    void addSnapshots() {
        auto& snapshots = add(app, "snapshot", "Keep the present state under a name, and compare",
                              Command::listSnapshots);
        snapshots.require_subcommand(0, 1);
        const auto named = [&](const char* verb, const char* purpose, Command command) -> auto& {
            auto& added = add(snapshots, verb, purpose, command);
            added.add_option("NAME", into.name, "Its name, or its identifier")->required();
            return added;
        };
        add(snapshots, "save", "Capture now and keep the result under a name",
            Command::saveSnapshot)
            .add_option("NAME", into.name, "Its new name")
            ->required();
        auto& list = add(snapshots, "list", "List the named snapshots", Command::listSnapshots);
        addJson(list);
        addJson(named("show", "Show what a named snapshot holds", Command::showSnapshot));
        auto& compare = named("compare", "Tell what is different now", Command::compareSnapshot);
        compare.add_flag("--timeline", into.sinceSnapshot,
                         "What was recorded since, instead of the two states");
        addJson(compare);
        named("delete", "Remove a named snapshot; the history stays", Command::deleteSnapshot)
            .add_flag("--yes", into.yes, "Do not ask");
    }

    void addExchange() {
        auto& exported =
            add(app, "export", "Write a report of the history", Command::exportHistory);
        addChoice<HistoryExport::Format>(
            exported, "--format", "csv or json", names<HistoryExport::Format>(),
            [&target = into](HistoryExport::Format format) { target.format = format; })
            ->required();
        addView(exported);
        exported.add_flag("--include-private", into.includePrivate,
                          "With paths, names of devices and networks, clips and origins");
        exported.add_option("-o,--output", into.output, "The file; standard output without it")
            ->check(notEmpty);
        auto& imported = add(app, "import", "Add what the system remembers of installations",
                             Command::importHistory);
        imported.add_flag("--include-routine", into.includeRoutine,
                          "With silent updates of the system's own data");
        imported.add_flag("--preview", into.preview, "Tell what there is, and add nothing");
        imported.callback([&target = into] {
            target.command = target.preview ? Command::previewImport : Command::importHistory;
        });
    }

    void addFolders() {
        auto& folders =
            add(app, "folders", "List or change the monitored folders", Command::listFolders);
        folders.require_subcommand(0, 1);
        add(folders, "list", "List the monitored and the recommended folders",
            Command::listFolders);
        auto& added = add(folders, "add", "Monitor a folder", Command::addFolder);
        added.add_option("PATH", into.path, "The folder")->required()->check(notEmpty);
        added.add_option("--purpose", into.purposes, "What to read it for")
            ->check(CLI::IsMember(texts<FolderPurpose>()));
        auto& track = add(folders, "track", "Read a monitored folder for a purpose, or not",
                          Command::trackFolder);
        track.add_option("PATH", into.path, "The folder")->required()->check(notEmpty);
        track
            .add_option_function<std::string>(
                "PURPOSE", [&target = into](const std::string& text) { target.purposes = {text}; },
                "What to read it for")
            ->required()
            ->check(CLI::IsMember(texts<FolderPurpose>()));
        track
            .add_option_function<std::string>(
                "SWITCH", [&target = into](const std::string& text) { target.on = text == "on"; },
                "on or off")
            ->required()
            ->check(CLI::IsMember({"on", "off"}));
        auto& removed = add(folders, "remove", "Monitor a folder no longer", Command::removeFolder);
        removed.add_option("PATH", into.path, "The folder")->required()->check(notEmpty);
        add(folders, "check", "Monitor all recommended folders that can be read",
            Command::checkFolders);
    }

    void addSettings() {
        auto& settings = add(app, "settings", "List or change settings", Command::listSettings);
        settings.require_subcommand(0, 1);
        auto& get = add(settings, "get", "Tell one setting", Command::getSetting);
        get.add_option("KEY", into.key, "The setting")->required();
        auto& set = add(settings, "set", "Change one setting", Command::setSetting);
        set.add_option("KEY", into.key, "The setting")->required();
        set.add_option("VALUE", into.value, "The new value")->required();
    }

    CLI::App& app;
    RecorderArguments& into;
};

} // namespace

void addRecorderCommands(CLI::App& app, RecorderArguments& into) {
    Builder(app, into).addAll();
}

RecorderArguments parseRecorderArguments(const std::vector<std::string>& arguments) {
    RecorderArguments parsed;
    CLI::App app("tidemark");
    addRecorderCommands(app, parsed);
    // The library takes them from the back.
    std::vector<std::string> reversed(arguments.rbegin(), arguments.rend());
    try {
        app.parse(std::move(reversed));
    } catch (const CLI::Error& error) {
        throw Error(error.what());
    }
    if (parsed.command == Command::none)
        throw Error("There is no such command.");
    return parsed;
}

} // namespace tidemark
