#include "cli/recorder/RecorderArguments.h"

#include "app/capture/CaptureSchedule.h"
#include "app/capture/FolderGrant.h"
#include "core/base/Error.h"

#include <algorithm>

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

class Builder {
public:
    Builder(CLI::App& line, RecorderArguments& target) : app(line), into(target) {}

    void addAll() {
        auto& capture =
            add(app, "capture", "Take a capture now and tell what changed", Command::capture);
        addSetup(capture);
        addJson(capture);
        auto& timeline = add(app, "timeline", "Show the recorded history", Command::timeline);
        addSince(timeline);
        timeline.add_option("--limit", into.limit, "Most events to show");
        addJson(timeline);
        addJson(add(app, "status", "Tell how recording stands", Command::status));
        add(app, "pause", "Pause all recording", Command::pause);
        add(app, "resume", "Resume recording with a new starting point", Command::resume);
        add(app, "schedule", "Tell or set how often captures are due", Command::schedule)
            .add_option("VALUE", into.schedule, "The new schedule")
            ->check(CLI::IsMember(texts<CaptureSchedule>()));
        addSince(
            add(app, "coverage", "Tell when and where nothing could be seen", Command::coverage));
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
    void addSince(CLI::App& to) {
        to.add_option("--since", into.since, "How far back: 12h, 7d, 3w or a date (2026-05-31)");
    }
    void addSetup(CLI::App& to) {
        to.add_option("--setup", into.setup,
                      "Choose the folders to monitor before the first capture")
            ->check(CLI::IsMember({"recommended", "none"}));
    }

    void addFolders() {
        auto& folders =
            add(app, "folders", "List or change the monitored folders", Command::listFolders);
        folders.require_subcommand(0, 1);
        add(folders, "list", "List the monitored and the recommended folders",
            Command::listFolders);
        auto& added = add(folders, "add", "Monitor a folder", Command::addFolder);
        added.add_option("PATH", into.path, "The folder")->required();
        added.add_option("--purpose", into.purposes, "What to read it for")
            ->check(CLI::IsMember(texts<FolderPurpose>()));
        auto& track = add(folders, "track", "Read a monitored folder for a purpose, or not",
                          Command::trackFolder);
        track.add_option("PATH", into.path, "The folder")->required();
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
        removed.add_option("PATH", into.path, "The folder")->required();
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

bool RecorderArguments::isReading() const {
    switch (command) {
    case Command::timeline:
    case Command::status:
    case Command::coverage:
    case Command::listFolders:
    case Command::listSettings:
    case Command::getSetting:
        return true;
    case Command::schedule:
        return schedule.empty();
    default:
        return false;
    }
}

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
