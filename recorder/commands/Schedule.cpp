#include "app/preferences/PreferenceKeys.h"
#include "core/capture/CaptureSchedule.h"
#include "recorder/Commands.h"
#include "recorder/Recorder.h"
#include "recorder/StoredRecords.h"
#include "recorder/TypedInvocation.h"

namespace tidemark {

namespace {

struct ScheduleOptions {
    std::optional<CaptureSchedule> value;

    static constexpr auto fields() {
        return std::tuple{
            Option{"value", &ScheduleOptions::value, "The new schedule", {.isPositional = true}}};
    }
};

std::string text(const Preferences& preferences) {
    const auto stored =
        json::fromRawValue<CaptureSchedule>(read(preferences, preferenceKeys::captureSchedule));
    const auto schedule = stored.value_or(CaptureSchedule::halfHourly);
    return std::string(rawValue(schedule)) + ": " + std::string(label(schedule)) + "\n";
}

QCoro::Task<std::string> schedule(CommandContext& context, const ScheduleOptions& options) {
    const auto& preferences = context.preferences();
    if (options.value && !context.model().setCaptureSchedule(*options.value))
        throw Error(preferences.problem().value_or("The schedule could not be stored."));
    co_return text(preferences);
}

std::optional<CommandAnswer> storedSchedule(StoredRecords& stored, const ScheduleOptions& options) {
    if (options.value)
        return std::nullopt;
    return CommandAnswer{text(stored.preferences())};
}

} // namespace

Command commands::schedule() {
    return makeCommand<ScheduleOptions, &tidemark::schedule>(
        {
            .name = "schedule",
            .group = CommandGroup::recording,
            .summary = "Show or set how often captures are taken",
        },
        {.fromStored = storedSchedule});
}

} // namespace tidemark
