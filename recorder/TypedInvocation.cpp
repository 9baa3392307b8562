#include "recorder/TypedInvocation.h"

#include "app/base/Background.h"
#include "recorder/Recorder.h"
#include "recorder/StoredRecords.h"

namespace tidemark::detail {

CommandAnswer storedSettings(StoredRecords& stored, const SettingsReader& answer) {
    auto& preferences = stored.preferences();
    return {answer({preferences, Recorder::sources(preferences)})};
}

CommandAnswer storedHistory(StoredRecords& stored, const HistoryReader& answer) {
    const HistoryReading reading{.history = stored.history(), .colour = stored.colour()};
    CommandAnswer result{answer(reading)};
    for (const auto& problem : reading.history.problems())
        result.problems.push_back(problem);
    return result;
}

QCoro::Task<std::string> liveSettings(CommandContext& context, SettingsReader answer) {
    co_return answer({context.preferences(), context.recorder.presentSources()});
}

QCoro::Task<std::string> liveHistory(CommandContext& context, HistoryReader answer) {
    context.requireHistory();
    const HistoryReading reading{
        .history = context.recorder.recorded(), .colour = context.colour, .stop = context.stop};
    std::string text =
        co_await runInBackground([&](const std::stop_token&) { return answer(reading); },
                                 context.stop, WorkPriority::userInitiated);
    co_return text;
}

QCoro::Task<std::string> storedChange(CommandContext& context, QCoro::Task<std::string> change) {
    std::string text = co_await change;
    context.requireStored();
    co_return text;
}

} // namespace tidemark::detail
