#include "app/control/ControlClient.h"
#include "app/ports/RecorderService.h"
#include "app/ports/SystemServices.h"
#include "cli/Console.h"
#include "cli/QtApplication.h"
#include "cli/TerminalCommands.h"
#include "core/base/FolderLock.h"
#include "core/base/Text.h"
#include "recorder/Columns.h"
#include "recorder/CommandRequests.h"
#include "recorder/Commands.h"
#include "recorder/Erasure.h"
#include "recorder/TypedInvocation.h"

#include <algorithm>
#include <chrono>
#include <thread>

namespace tidemark {

namespace {

/// How many pauses the command makes while it waits for the data folder, after it asked the
/// recorder to end: fifteen seconds in all; a recorder ends within ten.
constexpr int folderAttempts = 150;
constexpr std::chrono::milliseconds busyFolderPause{100};

struct EraseOptions {
    bool yes = false;

    static constexpr auto fields() {
        return std::tuple{Option{"yes", &EraseOptions::yes, "Do not ask"}};
    }
};

/// Whether the service runs, has failed or starts with the session; false without a service
/// manager. Throws when it starts with the session and can't be turned off, since it would begin a
/// new history.
bool hasService() {
    const auto service = systemServices::recorderService();
    if (!service)
        return false;
    try {
        const auto status = service->status();
        return status.startsWithSession || status.activity != RecorderService::Activity::stopped;
    } catch (const Error& error) {
        if (service->isEnabledByFiles())
            throw Error("Nothing was removed: the service starts with your session, and it can't "
                        "be turned off from here. "
                        + std::string(error.what()));
        return false;
    }
}

Erasure present(const RecorderPlaces& places) {
    const auto login = systemServices::loginItem({});
    return Erasure::of(places, login ? login->file() : std::nullopt);
}

std::string counted(std::size_t files) {
    return std::to_string(files) + (files == 1 ? " file" : " files");
}

std::string list(const Erasure& erasure) {
    std::size_t width = 0;
    for (const auto& part : erasure.parts())
        width = std::max(width, columns(oneLine(textFromBytes(part.path.native()))));
    std::string text;
    for (const auto& part : erasure.parts()) {
        const std::string path = oneLine(textFromBytes(part.path.native()));
        text += "  " + path + std::string(width - columns(path) + 2, ' ') + part.content
                + (part.files > 1 ? ", " + counted(part.files) : "")
                + (part.bytes > 0 ? ", " + byteString(part.bytes) : "") + "\n";
    }
    return text;
}

std::optional<std::string> eraseQuestion(const EraseOptions& options) {
    const auto places = RecorderPlaces::current();
    const Erasure erasure = present(places);
    const bool isService = hasService();
    if (options.yes || (erasure.isEmpty() && !isService))
        return std::nullopt;
    std::string text = "This removes all that Tidemark keeps for you, for ever:\n" + list(erasure);
    if (erasure.foreignFiles() > 0)
        text +=
            "What is not Tidemark's own stays there: " + counted(erasure.foreignFiles()) + ".\n";
    if (isService)
        text += "The service is turned off.\n";
    if (FolderLock::isTaken(places.files.directory))
        text += "The recorder that is running ends first.\n";
    return text + "Remove it?";
}

void endRecorder(const RecorderPlaces& places) {
    const auto command = commands::handOver();
    std::optional<ControlAnswer> answer;
    try {
        answer = ControlClient::ask(places.sockets,
                                    commandRequests::request(command, *command.invoke(), false));
    } catch (const ControlClient::RecorderEnded&) {
        return;
    }
    if (answer && !answer->error.empty())
        throw Error(
            "Nothing was removed: tidemark-desktop or a recorder of another version is running; "
            "quit it and try again.");
}

FolderLock taken(const std::filesystem::path& folder) {
    for (int attempt = 0;; ++attempt) {
        auto lock = FolderLock::take(folder);
        if (lock)
            return *std::move(lock);
        if (attempt == folderAttempts)
            throw Error("Nothing was removed. " + lock.error().sentence());
        std::this_thread::sleep_for(busyFolderPause);
    }
}

int erase(const EraseOptions&) {
    const auto places = RecorderPlaces::current();
    const QtApplication application;
    const bool isService = hasService();
    if (present(places).isEmpty() && !isService) {
        console::print("There is nothing of Tidemark to remove.\n");
        return 0;
    }
    endRecorder(places);
    // Otherwise the service would begin a new history with the next session.
    if (isService)
        systemServices::recorderService()->disable();
    std::optional<FolderLock> lock;
    if (std::filesystem::exists(places.files.directory))
        lock = taken(places.files.directory);
    // What the recorder wrote at its end goes, too.
    const Erasure erasure = present(places);
    erasure.carryOut();
    console::print("Removed all that Tidemark kept for you.\n");
    if (erasure.foreignFiles() > 0)
        console::print("What is not Tidemark's own stays in its folders: "
                       + counted(erasure.foreignFiles()) + ".\n");
    return 0;
}

} // namespace

Command commands::erase() {
    return makeCommand<EraseOptions, &tidemark::erase>(
        {
            .name = "erase",
            .group = CommandGroup::choices,
            .summary = "Remove the whole history, all settings and the start at login",
            .details =
                "Shows what will be removed and asks. Ends a recorder without windows first.",
        },
        {.question = eraseQuestion});
}

} // namespace tidemark
