#include "cli/Console.h"
#include "cli/SessionService.h"
#include "cli/TerminalCommands.h"
#include "recorder/TypedInvocation.h"

namespace tidemark {

/// The texts of the activity in JSON, beside "waiting".
template <>
inline constexpr auto json::rawValues<RecorderService::Activity> =
    std::to_array<json::RawValue<RecorderService::Activity>>({
        {RecorderService::Activity::stopped, "stopped"},
        {RecorderService::Activity::starting, "starting"},
        {RecorderService::Activity::running, "running"},
        {RecorderService::Activity::failed, "failed"},
    });

namespace {

struct ServiceStatusOptions {
    bool json = false;

    static constexpr auto fields() {
        return std::tuple{
            Option{"json", &ServiceStatusOptions::json, "Print JSON instead of text"}};
    }
};

struct Answer {
    bool startsWithSession = false;
    std::string activity;

    static constexpr auto fields() {
        return std::tuple{Field{"startsWithSession", &Answer::startsWithSession},
                          Field{"activity", &Answer::activity, Shown}};
    }
};

int serviceStatus(const ServiceStatusOptions& options) {
    const auto status = sessionService::ofSystem()->status();
    if (!options.json) {
        console::print(sessionService::sentence(status));
        return 0;
    }
    const std::string activity =
        sessionService::isWaiting(status) ? "waiting" : std::string(rawValue(status.activity));
    console::print(json::encoded(Answer{status.startsWithSession, activity}) + "\n");
    return 0;
}

} // namespace

Command commands::serviceStatus() {
    return makeCommand<ServiceStatusOptions, &tidemark::serviceStatus>({
        .name = "service status",
        .group = CommandGroup::recording,
        .summary = "Show whether the service runs and starts with your session",
        .family = "Record in the background from the start of your session",
    });
}

} // namespace tidemark
