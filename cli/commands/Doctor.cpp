#include "app/control/ControlClient.h"
#include "cli/Console.h"
#include "cli/QtApplication.h"
#include "cli/SessionService.h"
#include "cli/TerminalCommands.h"
#include "core/base/Calendar.h"
#include "core/base/FolderLock.h"
#include "core/journal/JournalStore.h"
#include "core/presentation/SystemWords.h"
#include "core/system/SystemFacts.h"
#include "recorder/CommandRequests.h"
#include "recorder/Commands.h"
#include "recorder/Diagnosis.h"
#include "recorder/PublicText.h"
#include "recorder/StoredRecords.h"
#include "recorder/TypedInvocation.h"

#include <QLoggingCategory>
#include <QtGlobal>
#include <algorithm>
#include <chrono>
#include <iterator>

namespace tidemark {

namespace {

constexpr std::chrono::seconds recorderPatience{20};

struct DoctorOptions {
    bool json = false;

    static constexpr auto fields() {
        return std::tuple{Option{"json", &DoctorOptions::json, "Print JSON instead of text"}};
    }
};

/// The part of the answer to "settings list" that a diagnosis needs.
struct SettingsAnswer {
    std::vector<Diagnosis::Setting> settings;
    std::optional<std::string> problem;

    static constexpr auto fields() {
        return std::tuple{Field{"settings", &SettingsAnswer::settings},
                          Field{"problem", &SettingsAnswer::problem, Private}};
    }
};

/// The text of an issue such as "Storage · NAME: …" without the name of the folder. Other issues
/// stay as they are.
std::string withoutFolderName(const std::string& issue) {
    const auto name = issue.find(" · ");
    const auto end = issue.rfind(": ");
    return name == issue.npos || end == issue.npos || end < name
               ? issue
               : issue.substr(0, name) + issue.substr(end);
}

/// Collects a diagnosis. What fails is reported in it.
class Examination {
public:
    Diagnosis diagnose() {
        found.version = TIDEMARK_VERSION;
        found.toolkit = std::string("Qt ") + qVersion();
        found.system = SystemFacts::collectOperatingSystem();
        found.clock = Date::now();
        found.secondsEastOfUTC = secondsEastOfUTC(found.clock);
        if (auto answer = answerTo<RecorderStatus>(commands::status()))
            found.recorder = *std::move(answer);
        if (auto answer = answerTo<SettingsAnswer>(commands::settingsList()))
            useSettings(*std::move(answer));
        useLastCapture();
        found.service = serviceState();
        found.services = serviceReport::ofSystem();
        found.documents = documentReports(places, names);
        found.freeBytes = SystemFacts::volumeSpace(places.files.directory).freeBytes;
        hidePrivateDetails();
        found.problems = diagnosis::findProblems(found);
        return std::move(found);
    }

private:
    static std::int64_t secondsEastOfUTC(Date now) {
        const auto local = Calendar().clockAt(now).time_since_epoch();
        const auto seconds = static_cast<std::int64_t>(now.secondsSince1970());
        // Both times are rounded to seconds, and offsets are whole minutes.
        return (local.count() - seconds + 30) / 60 * 60;
    }

    void addProblem(const std::string& problem) { found.recorder.problems.push_back(problem); }

    /// What a command answers as JSON: from the running recorder, or else from the stored files. An
    /// error becomes a problem of the diagnosis, and the answer is absent.
    template <class Answer>
    std::optional<Answer> answerTo(const Command& command) {
        const auto invocation = command.invoke();
        invocation->setOptions(R"({"json":true})");
        try {
            const auto answer = ControlClient::ask(
                places.sockets, commandRequests::request(command, *invocation, false),
                {.answer = recorderPatience});
            if (answer && !answer->error.empty())
                throw Error(answer->error);
            if (answer)
                return json::decode<Answer>(answer->output);
            if (FolderLock::isTaken(places.files.directory))
                addProblem("Another process uses the data folder, and no recorder answers.");
            StoredRecords stored(places, false);
            const auto text = invocation->answerFromStored(stored).value_or(CommandAnswer{}).text;
            return json::decode<Answer>(text);
        } catch (const Error& error) {
            addProblem(error.what());
            return std::nullopt;
        }
    }

    /// Keeps the settings that are on or off; others can have private values.
    void useSettings(SettingsAnswer answer) {
        std::erase_if(answer.settings, [](const auto& setting) {
            return setting.value != "on" && setting.value != "off";
        });
        found.settings = std::move(answer.settings);
        if (answer.problem)
            addProblem(*answer.problem);
    }

    void useLastCapture() {
        try {
            const auto journal = JournalStore(places.files.journal()).load();
            if (journal.snapshots.empty())
                return;
            const auto& last = *journal.snapshots.back();
            found.collectors = diagnosis::collectors(last);
            for (const auto& snapshot : journal.snapshots)
                found.latestCapture =
                    std::max(found.latestCapture, std::optional(snapshot->timestamp));
            std::ranges::transform(last.coverage.issues, std::back_inserter(found.issues),
                                   withoutFolderName);
        } catch (const Error&) {
            // The error is reported with the documents.
        }
    }

    static std::string serviceState() {
        try {
            return std::string(
                trimmed(sessionService::sentence(sessionService::ofSystem()->status())));
        } catch (const Error& error) {
            return error.what();
        }
    }

    void hide(std::string& text) const { text = publicText::of(systemWords::shown(text), names); }

    void hidePrivateDetails() {
        for (auto& monitor : found.recorder.monitors)
            hide(monitor.text);
        for (auto& problem : found.recorder.problems)
            hide(problem);
        // Many folders often have the same issue.
        for (auto& issue : found.issues)
            hide(issue);
        std::ranges::sort(found.issues);
        const auto repeated = std::ranges::unique(found.issues);
        found.issues.erase(repeated.begin(), repeated.end());
        for (auto& setting : found.settings)
            if (setting.notAvailable)
                hide(*setting.notAvailable);
        hide(found.recorder.activity);
        hide(found.service);
    }

    const RecorderPlaces places = RecorderPlaces::current();
    const std::vector<std::string> names = publicText::privateNames();
    Diagnosis found;
};

int doctor(const DoctorOptions& options) {
    const QtApplication application;
    // Nothing is logged: the output itself says what could not be asked.
    QLoggingCategory::setFilterRules("*=false");
    const Diagnosis found = Examination().diagnose();
    console::print(options.json ? json::encoded(found) + "\n" : diagnosis::text(found));
    return 0;
}

} // namespace

Command commands::doctor() {
    return makeCommand<DoctorOptions, &tidemark::doctor>({
        .name = "doctor",
        .group = CommandGroup::recording,
        .summary = "Show what helps to find a problem, without private details",
        .details = "It can be shown to others: it has no paths or names of yours, and nothing of "
                   "what was recorded.",
    });
}

} // namespace tidemark
