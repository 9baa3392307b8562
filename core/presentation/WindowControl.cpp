#include "core/presentation/WindowControl.h"

namespace tidemark {

std::vector<WindowOption> windowOptions(std::string_view range, std::int64_t customDays) {
    const auto selected =
        json::fromRawValue<HistoryTimeWindow>(range).value_or(HistoryTimeWindow::all);
    std::vector<WindowOption> options;
    for (const auto& [window, raw] : json::rawValues<HistoryTimeWindow>)
        options.push_back({raw, label(window, customDays), window == selected});
    return options;
}

} // namespace tidemark
