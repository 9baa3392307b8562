#include "recorder/Commands.h"
#include "recorder/CoverageText.h"
#include "recorder/HistoryFilter.h"
#include "recorder/HistoryTime.h"
#include "recorder/TypedInvocation.h"

namespace tidemark {

namespace {

struct CoverageOptions {
    std::optional<std::string> since;

    static constexpr auto fields() {
        return std::tuple{
            Option{"since", &CoverageOptions::since, sinceHelp, {}, &historyTime::checkSince}};
    }
};

std::string coverage(const HistoryReading& reading, const CoverageOptions& options) {
    const Date since = historyTime::since(options.since.value_or(""), reading.now);
    return coverageText(reading.history.gaps(), since, reading.now);
}

} // namespace

Command commands::coverage() {
    return makeCommand<CoverageOptions, &tidemark::coverage>({
        .name = "coverage",
        .group = CommandGroup::history,
        .summary = "Show folders that could not be read, and gaps between captures",
    });
}

} // namespace tidemark
