#pragma once

#include "app/capture/FolderAccess.h"
#include "app/preferences/Preferences.h"
#include "core/journal/Journal.h"

#include <string>
#include <vector>

/// What the commands say of the recorded history, for people and as JSON.
namespace tidemark::historyText {

/// The moment that "12h", "7d", "3w" (back from `now`) or "2026-05-31" (its local midnight) means.
/// Throws `Error` for anything else. The empty text is the distant past.
Date sinceDate(const std::string& text, Date now);

/// Every event, newest first, no older than `since`, at most `limit` of them.
std::vector<Shared<Event>> timeline(const Journal& journal, Date since,
                                    std::optional<std::size_t> limit);
std::string timelineText(const std::vector<Shared<Event>>& events, bool colour);

/// How recording stands.
struct Status {
    /// A recorder runs.
    bool running = false;
    std::string mode;
    std::string activity;
    std::string schedule;
    std::optional<Date> lastCapture;
    std::optional<Date> nextCapture;
    std::int64_t snapshots = 0;
    std::int64_t events = 0;
    std::int64_t folders = 0;
    std::vector<std::string> problems;

    static constexpr auto fields() {
        return std::tuple{
            Field{"running", &Status::running},         Field{"mode", &Status::mode},
            Field{"activity", &Status::activity},       Field{"schedule", &Status::schedule},
            Field{"lastCapture", &Status::lastCapture}, Field{"nextCapture", &Status::nextCapture},
            Field{"snapshots", &Status::snapshots},     Field{"events", &Status::events},
            Field{"folders", &Status::folders},         Field{"problems", &Status::problems},
        };
    }
};
std::string statusText(const Status& status);

/// Gaps and access problems after `since`, until `now`.
std::string coverageText(const Journal& journal, Date since, Date now);

/// The monitored folders and those worth monitoring. `failures` holds, by path, why a folder can't
/// be read at present; a folder that can has none.
std::string foldersText(const FolderAccess& folders,
                        const std::map<std::string, std::string>& failures);

/// One line a setting that is the user's to set.
std::string settingsText(const Preferences& preferences);
/// Throws `Error` when there is no such setting.
std::string settingText(const Preferences& preferences, const std::string& key);
/// Checks `text` against the table of settings and stores it. Throws `Error` when it does not fit.
void setSetting(Preferences& preferences, const std::string& key, const std::string& text);

} // namespace tidemark::historyText
